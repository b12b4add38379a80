// Drives windows as a person does, with mouse and keyboard, and looks at what they show. The same
// on every platform.
#pragma once

#include "platform/types.h"
#include "platform/win32.h"

#include <functional>
#include <memory>
#include <vector>

// ---- Mouse --------------------------------------------------------------------------------------

// Places are in client coordinates.
void PressMouse(HWND window, POINT place);
void DragMouse(HWND window, POINT place); // with the button held
void MoveMouse(HWND window, POINT place); // without
void ReleaseMouse(HWND window, POINT place);
void ClickMouse(HWND window, POINT place);
POINT MiddleOf(HWND window);

// ---- Keyboard -----------------------------------------------------------------------------------

constexpr int kNoModifier = 0;
constexpr int kShift = 16; // the keys' own numbers
constexpr int kAlt = 18;

constexpr int kKeyTab = 9;
constexpr int kKeyEnter = 13;
constexpr int kKeyEscape = 27;
constexpr int kKeySpace = 32;
constexpr int kKeyPageUp = 33;
constexpr int kKeyPageDown = 34;
constexpr int kKeyEnd = 35;
constexpr int kKeyHome = 36;
constexpr int kKeyLeft = 37;
constexpr int kKeyUp = 38;
constexpr int kKeyRight = 39;
constexpr int kKeyDown = 40;
constexpr int kKeyDelete = 46;

// Presses and releases a key where the focus is. Letters and digits are their own numbers.
void TypeKey(int key, int modifier = kNoModifier);

// ---- Windows ------------------------------------------------------------------------------------

// Closes a window by its title bar.
void PressCloseBox(HWND window);

// Handles everything that waits, deletions too.
void RunPending();

// Runs an action once, from the loop, as soon as a dialog is up.
void RunSoon(std::function<void()> action);

HINSTANCE ModuleWithoutDialogs();

// Called before and after every dialog that this program runs modally, until the next call.
struct DialogWatch {
    std::function<void(int dialog)> opens;
    std::function<void(int dialog, INT_PTR result)> ends;
};
void WatchDialogs(DialogWatch watch);

// ---- Pictures -----------------------------------------------------------------------------------

struct Screen {
    int width = 0;
    int height = 0;
    std::vector<u32> pixels; // top row first, 0x00RRGGBB

    Screen() = default;
    Screen(int columns, int rows, u32 colour)
        : width(columns), height(rows),
          pixels(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), colour) {}

    u32& At(int x, int y) { return pixels[static_cast<std::size_t>(y * width + x)]; }
    u32 At(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
    bool operator==(const Screen&) const = default;

    // The part from `left`, `top` on.
    Screen Part(int left, int top, int columns, int rows) const {
        Screen part(columns, rows, 0);
        for (int y = 0; y < rows; ++y) {
            for (int x = 0; x < columns; ++x) {
                part.At(x, y) = At(left + x, top + y);
            }
        }
        return part;
    }
};

// What a window shows in its client area, with all that it holds.
Screen ScreenOf(HWND window);

// A picture that is drawn on.
class DrawnPicture {
public:
    explicit DrawnPicture(const Screen& start);
    ~DrawnPicture();
    DrawnPicture(const DrawnPicture&) = delete;
    DrawnPicture& operator=(const DrawnPicture&) = delete;

    HDC Dc() const;
    // Ends the drawing.
    Screen Finish();

private:
    struct Surface;
    std::unique_ptr<Surface> surface_;
};

// The windows of the layer: one structure each, found by its handle.
//
// A message may destroy any window. Whoever sends one and needs a window afterwards looks it up
// again by its handle.
#pragma once

#include "platform/win32.h"

#include <QImage>
#include <QMargins>
#include <QPointer>
#include <QRegion>
#include <QString>
#include <QWidget>

#include <cstddef>
#include <string>
#include <vector>

struct ControlKind;
class ModalLoop;

// What a window of a registered class has painted. The screen shows copies of it.
struct Surface {
    QImage image;
    QRegion update; // waits for WM_PAINT
    bool erase = false;
    bool painting = false; // WM_PAINT is on its way
    HDC dc = nullptr;      // between BeginPaint and EndPaint
};

enum class WindowKind { Registered, Dialog, Control };

struct Window {
    HWND handle = nullptr;
    WindowKind kind = WindowKind::Registered;
    std::string className;
    WNDPROC procedure = nullptr;
    UINT classStyle = 0;
    HBRUSH background = nullptr;
    const ControlKind* control = nullptr;
    QPointer<QWidget> widget;
    HWND parent = nullptr; // a child's parent, or the owner as it was given
    std::vector<HWND> children;
    HINSTANCE instance = nullptr;
    int id = 0;
    DWORD style = 0;
    DWORD exStyle = 0;
    LONG_PTR userData = 0;
    std::vector<std::byte> extra;
    std::string text;
    HFONT font = nullptr;
    bool destroying = false;
    Surface surface;
    DLGPROC dialogProcedure = nullptr;
    int defaultId = IDOK;
    ModalLoop* modal = nullptr;

    bool IsChild() const { return (style & WS_CHILD) != 0; }
};

// Null for a null, stale or wrong handle, and off the thread of the windows. The address holds as
// long as the window does.
Window* FindWindowOf(HWND handle);

// Whether the value has the mark of this layer's handles; native window ids have not.
bool IsWindowHandle(HWND handle);

// All windows, oldest first.
std::vector<HWND> AllWindows();

// The widget of a window; null also when Qt has taken it away.
QWidget* WidgetOf(HWND handle);

// The window whose widget this is, or that has it inside; null when there is none.
HWND WindowOfWidget(const QWidget* widget);

// The outermost window of the layer that a window lies in.
HWND TopLevelOf(HWND handle);

// The dialog that a window is or lies in, the innermost one.
HWND DialogOf(HWND handle);

// Enters a window into the table. Null when the table is full.
Window* AddWindow();
void SetWindowWidget(Window& window, QWidget* widget);

// Removes it; the widget goes as soon as no handler of it can be running.
void RemoveWindow(HWND handle);

QString ToQString(const std::string& text);

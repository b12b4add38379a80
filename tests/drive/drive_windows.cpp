#include "tests/drive/drive.h"

#include "tests/support/windows/import_hooks.h"

#include <utility>

// ---- Dialogs ------------------------------------------------------------------------------------

namespace {

DialogWatch watch;
// Those whose loops run, the innermost last.
std::vector<HWND> openDialogs;

struct Opening {
    DLGPROC procedure;
    LPARAM param;
};

INT_PTR WINAPI HookedDialogBoxParamA(HINSTANCE instance, LPCSTR name, HWND parent,
                                     DLGPROC procedure, LPARAM param);

HOOK_IMPORT("user32", DialogBoxParamA, 20)

// Notes the window, and leaves it to its own procedure.
INT_PTR CALLBACK Open(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_INITDIALOG) {
        return FALSE;
    }
    const auto& opening = *reinterpret_cast<const Opening*>(lParam);
    SetWindowLongPtrA(dialog, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(opening.procedure));
    openDialogs.back() = dialog;
    return opening.procedure(dialog, message, wParam, opening.param);
}

INT_PTR WINAPI HookedDialogBoxParamA(HINSTANCE instance, LPCSTR name, HWND parent,
                                     DLGPROC procedure, LPARAM param) {
    const int id = LOWORD(reinterpret_cast<std::uintptr_t>(name));
    if (watch.opens) {
        watch.opens(id);
    }
    const Opening opening{procedure, param};
    openDialogs.push_back(nullptr);
    const INT_PTR result =
        SystemDialogBoxParamA(instance, name, parent, Open, reinterpret_cast<LPARAM>(&opening));
    openDialogs.pop_back();
    if (watch.ends) {
        watch.ends(id, result);
    }
    return result;
}

// Handles waiting messages as the innermost dialog's loop does.
void Pump(UINT first, UINT last) {
    MSG message;
    while (PeekMessageA(&message, nullptr, first, last, PM_REMOVE) != 0) {
        const HWND dialog = openDialogs.empty() ? nullptr : openDialogs.back();
        if (dialog == nullptr || IsDialogMessageA(dialog, &message) == 0) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
}

void PumpInput() {
    Pump(WM_KEYFIRST, WM_KEYLAST);
    Pump(WM_MOUSEFIRST, WM_MOUSELAST);
}

void PostMouse(HWND window, UINT message, WPARAM buttons, POINT place) {
    PostMessageA(window, message, buttons, MAKELPARAM(place.x, place.y));
}

void HoldModifier(int modifier, bool down) {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[modifier] = down ? 0x80 : 0;
    SetKeyboardState(keys);
}

} // namespace

HINSTANCE ModuleWithoutDialogs() {
    return GetModuleHandleA("kernel32");
}

void WatchDialogs(DialogWatch next) {
    watch = std::move(next);
}

// ---- Mouse --------------------------------------------------------------------------------------

void PressMouse(HWND window, POINT place) {
    PostMouse(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PumpInput();
}

void DragMouse(HWND window, POINT place) {
    PostMouse(window, WM_MOUSEMOVE, MK_LBUTTON, place);
    PumpInput();
}

void MoveMouse(HWND window, POINT place) {
    PostMouse(window, WM_MOUSEMOVE, 0, place);
    PumpInput();
}

void ReleaseMouse(HWND window, POINT place) {
    PostMouse(window, WM_LBUTTONUP, 0, place);
    PumpInput();
}

// Some controls wait for the release in a loop of their own.
void ClickMouse(HWND window, POINT place) {
    PostMouse(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMouse(window, WM_LBUTTONUP, 0, place);
    PumpInput();
}

// ---- Keyboard -----------------------------------------------------------------------------------

void TypeKey(int key, int modifier) {
    const bool alt = modifier == kAlt;
    const LPARAM code = static_cast<LPARAM>(MapVirtualKeyA(static_cast<UINT>(key), 0) << 16) | 1;
    const LPARAM held = alt ? LPARAM{1} << 29 : 0;
    const LPARAM up = static_cast<LPARAM>(0xC0000000u);
    const HWND focus = GetFocus();
    HoldModifier(modifier, modifier != kNoModifier);
    PostMessageA(focus, alt ? WM_SYSKEYDOWN : WM_KEYDOWN, static_cast<WPARAM>(key), code | held);
    PumpInput();
    if (IsWindow(focus) != 0) {
        PostMessageA(focus, alt ? WM_SYSKEYUP : WM_KEYUP, static_cast<WPARAM>(key),
                     code | held | up);
        PumpInput();
    }
    HoldModifier(modifier, false);
}

// ---- Windows ------------------------------------------------------------------------------------

void PressCloseBox(HWND window) {
    SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

void RunPending() {
    Pump(0, 0);
}

// ---- Pictures -----------------------------------------------------------------------------------

// A context in memory with a picture of 32 bits.
struct DrawnPicture::Surface {
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ before;
    u32* bits = nullptr;
    int width;
    int height;

    Surface(int columns, int rows) : dc(CreateCompatibleDC(nullptr)), width(columns), height(rows) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = columns;
        info.bmiHeader.biHeight = -rows;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* first = nullptr;
        bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &first, nullptr, 0);
        bits = static_cast<u32*>(first);
        before = SelectObject(dc, bitmap);
    }
    ~Surface() {
        SelectObject(dc, before);
        DeleteObject(bitmap);
        DeleteDC(dc);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    std::size_t Pixels() const {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }

    Screen Copy() const {
        GdiFlush();
        Screen screen(width, height, 0);
        for (std::size_t i = 0; i < Pixels(); ++i) {
            screen.pixels[i] = bits[i] & 0xFFFFFF;
        }
        return screen;
    }
};

DrawnPicture::DrawnPicture(const Screen& start)
    : surface_(std::make_unique<Surface>(start.width, start.height)) {
    std::copy(start.pixels.begin(), start.pixels.end(), surface_->bits);
}

DrawnPicture::~DrawnPicture() = default;

HDC DrawnPicture::Dc() const {
    return surface_->dc;
}

Screen DrawnPicture::Finish() {
    return surface_->Copy();
}

Screen ScreenOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    DrawnPicture picture(Screen(client.right, client.bottom, 0));
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const HDC dc = GetDC(window);
    BitBlt(picture.Dc(), 0, 0, client.right, client.bottom, dc, 0, 0, SRCCOPY);
    ReleaseDC(window, dc);
    return picture.Finish();
}

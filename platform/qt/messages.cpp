// Sending and posting, and what a window does that its class leaves to the system.
#include "platform/qt/application.h"
#include "platform/qt/graphics.h"
#include "platform/qt/window.h"

#include <algorithm>
#include <cstring>

namespace {

LRESULT SetText(HWND handle, const char* text) {
    Window& window = *FindWindowOf(handle);
    window.text = text == nullptr ? "" : text;
    if (!window.IsChild() && !window.widget.isNull()) {
        window.widget->setWindowTitle(ToQString(window.text));
    }
    return 1;
}

LRESULT CopyText(const Window& window, char* buffer, WPARAM size) {
    if (buffer == nullptr || size == 0) {
        return 0;
    }
    const std::size_t length = std::min<std::size_t>(window.text.size(), size - 1);
    std::memcpy(buffer, window.text.data(), length);
    buffer[length] = '\0';
    return static_cast<LRESULT>(length);
}

LRESULT EraseBackground(HWND handle, HDC dc) {
    const HBRUSH brush = FindWindowOf(handle)->background;
    RECT client;
    if (brush == nullptr || !GetClientRect(handle, &client)) {
        return 0;
    }
    FillRect(dc, &client, brush);
    return 1;
}

} // namespace

extern "C" {

LRESULT DefWindowProcA(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const Window* window = FindWindowOf(handle);
    if (window == nullptr) {
        return 0;
    }
    switch (message) {
    case WM_NCCREATE:
        return 1;
    case WM_SETTEXT:
        return SetText(handle, reinterpret_cast<const char*>(lParam));
    case WM_GETTEXT:
        return CopyText(*window, reinterpret_cast<char*>(lParam), wParam);
    case WM_ERASEBKGND:
        return EraseBackground(handle, reinterpret_cast<HDC>(wParam));
    case WM_CLOSE:
        DestroyWindow(handle);
        return 0;
    default:
        return 0;
    }
}

LRESULT SendMessageA(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const Window* window = FindWindowOf(handle);
    return window == nullptr ? 0 : window->procedure(handle, message, wParam, lParam);
}

BOOL PostMessageA(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (FindWindowOf(handle) == nullptr) {
        return 0;
    }
    return PostCall([=] { SendMessageA(handle, message, wParam, lParam); });
}

} // extern "C"

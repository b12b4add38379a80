// What a window is asked about itself: its words, its class name, its text.
#include "platform/qt/window.h"

#include <algorithm>
#include <cstring>

namespace {

// The place of an extra word, or null when the window has no such bytes.
std::byte* ExtraWord(Window& window, int index) {
    const auto offset = static_cast<std::size_t>(index);
    const bool there = index >= 0 && offset + sizeof(LONG_PTR) <= window.extra.size();
    return there ? window.extra.data() + offset : nullptr;
}

int CopyOut(const std::string& text, LPSTR buffer, int size) {
    if (buffer == nullptr || size < 1) {
        return 0;
    }
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

} // namespace

extern "C" {

LONG_PTR GetWindowLongPtrA(HWND handle, int index) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr) {
        return 0;
    }
    switch (index) {
    case GWLP_USERDATA:
        return window->userData;
    case GWL_STYLE:
        return static_cast<LONG_PTR>(window->style);
    case GWL_EXSTYLE:
        return static_cast<LONG_PTR>(window->exStyle);
    case GWL_ID:
        return window->id;
    case GWLP_HINSTANCE:
        return reinterpret_cast<LONG_PTR>(window->instance);
    default:
        break;
    }
    LONG_PTR value = 0;
    if (const std::byte* word = ExtraWord(*window, index)) {
        std::memcpy(&value, word, sizeof value);
    }
    return value;
}

LONG_PTR SetWindowLongPtrA(HWND handle, int index, LONG_PTR value) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr) {
        return 0;
    }
    const LONG_PTR before = GetWindowLongPtrA(handle, index);
    switch (index) {
    case GWLP_USERDATA:
        window->userData = value;
        return before;
    case GWL_STYLE:
        window->style = static_cast<DWORD>(value);
        return before;
    case GWL_EXSTYLE:
        window->exStyle = static_cast<DWORD>(value);
        return before;
    case GWL_ID:
        window->id = static_cast<int>(value);
        return before;
    case GWLP_HINSTANCE:
        window->instance = reinterpret_cast<HINSTANCE>(value);
        return before;
    default:
        break;
    }
    if (std::byte* word = ExtraWord(*window, index)) {
        std::memcpy(word, &value, sizeof value);
    }
    return before;
}

int GetClassNameA(HWND handle, LPSTR buffer, int size) {
    const Window* window = FindWindowOf(handle);
    return window == nullptr ? 0 : CopyOut(window->className, buffer, size);
}

BOOL SetWindowTextA(HWND handle, LPCSTR text) {
    if (FindWindowOf(handle) == nullptr) {
        return 0;
    }
    return SendMessageA(handle, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
}

int GetWindowTextA(HWND handle, LPSTR buffer, int size) {
    if (buffer == nullptr || size < 1) {
        return 0;
    }
    buffer[0] = '\0';
    return static_cast<int>(SendMessageA(handle, WM_GETTEXT, static_cast<WPARAM>(size),
                                         reinterpret_cast<LPARAM>(buffer)));
}

int GetDlgCtrlID(HWND handle) {
    const Window* window = FindWindowOf(handle);
    return window == nullptr ? 0 : window->id;
}

BOOL IsWindowEnabled(HWND handle) {
    const Window* window = FindWindowOf(handle);
    return window != nullptr && (window->style & WS_DISABLED) == 0;
}

// A window of its own keeps its looks when it is disabled; FilterInput keeps input from it.
BOOL EnableWindow(HWND handle, BOOL enable) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr) {
        return 0;
    }
    const bool before = (window->style & WS_DISABLED) != 0;
    window->style = enable ? window->style & ~WS_DISABLED : window->style | WS_DISABLED;
    if (window->IsChild() && !window->widget.isNull()) {
        window->widget->setEnabled(enable != 0);
    }
    return before;
}

} // extern "C"

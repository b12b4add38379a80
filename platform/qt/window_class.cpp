#include "platform/qt/window_class.h"

#include "platform/qt/control.h"
#include "platform/qt/window.h"
#include "platform/qt/window_testing.h"

#include <algorithm>
#include <list>

namespace {

constexpr ATOM kFirstAtom = 0xC000;

std::list<WindowClass>& Classes() {
    static auto& classes = *new std::list<WindowClass>;
    return classes;
}

bool IsText(LPCSTR name) {
    return reinterpret_cast<std::uintptr_t>(name) > 0xFFFF;
}

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

bool SameClassName(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return Lower(a) == Lower(b); });
}

const WindowClass* FindWindowClass(std::string_view name) {
    for (const WindowClass& windowClass : Classes()) {
        if (SameClassName(windowClass.name, name)) {
            return &windowClass;
        }
    }
    return nullptr;
}

std::size_t RegisteredClassCount() {
    return Classes().size();
}

extern "C" {

ATOM RegisterClassExA(const WNDCLASSEXA* windowClass) {
    static ATOM nextAtom = kFirstAtom;
    if (windowClass == nullptr || windowClass->cbSize != sizeof(WNDCLASSEXA) ||
        !IsText(windowClass->lpszClassName) || windowClass->lpfnWndProc == nullptr ||
        windowClass->cbWndExtra < 0) {
        return 0;
    }
    const std::string_view name = windowClass->lpszClassName;
    if (name.empty() || IsControlClass(name) || SameClassName(name, kDialogClassName) ||
        FindWindowClass(name) != nullptr) {
        return 0;
    }
    Classes().push_back({std::string(name), nextAtom, windowClass->style, windowClass->lpfnWndProc,
                         windowClass->cbWndExtra, windowClass->hCursor,
                         windowClass->hbrBackground});
    return nextAtom++;
}

BOOL UnregisterClassA(LPCSTR className, HINSTANCE) {
    const WindowClass* found = IsText(className) ? FindWindowClass(className) : nullptr;
    if (found == nullptr) {
        return 0;
    }
    for (HWND handle : AllWindows()) {
        if (SameClassName(FindWindowOf(handle)->className, found->name)) {
            return 0;
        }
    }
    Classes().remove_if([found](const WindowClass& one) { return &one == found; });
    return 1;
}

} // extern "C"

#include "platform/qt/navigation.h"

#include "platform/qt/control.h"

#include <algorithm>
#include <iterator>

namespace {

// The control of the dialog that a window is or lies in.
HWND ControlOf(HWND dialog, HWND handle) {
    for (const Window* window = FindWindowOf(handle); window != nullptr;
         window = FindWindowOf(window->parent)) {
        if (window->parent == dialog && window->IsChild()) {
            return window->handle;
        }
    }
    return nullptr;
}

bool IsTabStop(HWND control) {
    return (FindWindowOf(control)->style & WS_TABSTOP) != 0 && IsUsable(control);
}

bool TakesFocus(HWND control) {
    return IsUsable(control) && (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_STATIC) == 0;
}

// Round through the controls from the one after `from`; `from` itself is the last to be asked.
template <class Accept>
HWND NextOf(std::vector<HWND> controls, HWND from, bool backwards, Accept accept) {
    if (backwards) {
        std::ranges::reverse(controls);
    }
    const auto at = std::ranges::find(controls, from);
    if (at != controls.end()) {
        std::rotate(controls.begin(), std::next(at), controls.end());
    }
    const auto found = std::ranges::find_if(controls, accept);
    return found == controls.end() ? nullptr : *found;
}

} // namespace

bool IsUsable(HWND control) {
    const Window* window = FindWindowOf(control);
    return window != nullptr && (window->style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
}

HWND NextTabStop(HWND dialog, HWND from, bool backwards) {
    const Window* window = FindWindowOf(dialog);
    if (window == nullptr) {
        return nullptr;
    }
    return NextOf(window->children, ControlOf(dialog, from), backwards, IsTabStop);
}

std::vector<HWND> GroupOf(HWND control) {
    const Window* window = FindWindowOf(control);
    const Window* parent = window == nullptr ? nullptr : FindWindowOf(window->parent);
    if (parent == nullptr) {
        return {};
    }
    const auto& all = parent->children;
    const auto begins = [](HWND one) { return (FindWindowOf(one)->style & WS_GROUP) != 0; };
    const auto at = std::ranges::find(all, control);
    if (at == all.end()) {
        return {};
    }
    auto first = at;
    while (first != all.begin() && !begins(*first)) {
        --first;
    }
    return {first, std::find_if(std::next(at), all.end(), begins)};
}

HWND NextInGroup(HWND from, bool backwards) {
    return NextOf(GroupOf(from), from, backwards, TakesFocus);
}

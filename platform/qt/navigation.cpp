#include "platform/qt/navigation.h"

#include "platform/qt/control.h"

#include <algorithm>
#include <iterator>

namespace {

bool IsControlParent(const Window& window) {
    return window.IsChild() && (window.exStyle & WS_EX_CONTROLPARENT) != 0;
}

// The one of the controls that a window is or lies in.
HWND ControlAround(HWND handle, const std::vector<HWND>& controls) {
    while (handle != nullptr && std::ranges::find(controls, handle) == controls.end()) {
        const Window* window = FindWindowOf(handle);
        handle = window != nullptr && window->IsChild() ? window->parent : nullptr;
    }
    return handle;
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

void FocusControl(HWND control) {
    SetFocus(control);
    if ((SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0) {
        SendMessageA(control, EM_SETSEL, 0, -1);
    }
}

HWND KeyDialogOf(HWND handle) {
    HWND dialog = DialogOf(handle);
    for (const Window* window = FindWindowOf(dialog); window != nullptr && IsControlParent(*window);
         window = FindWindowOf(dialog)) {
        const HWND around = DialogOf(window->parent);
        if (around == nullptr) {
            break;
        }
        dialog = around;
    }
    return dialog;
}

std::vector<HWND> ControlsOf(HWND dialog) {
    std::vector<HWND> controls;
    const Window* window = FindWindowOf(dialog);
    for (HWND child : window == nullptr ? std::vector<HWND>{} : window->children) {
        if (!IsControlParent(*FindWindowOf(child))) {
            controls.push_back(child);
        } else if (IsUsable(child)) {
            std::ranges::copy(ControlsOf(child), std::back_inserter(controls));
        }
    }
    return controls;
}

bool IsUsable(HWND control) {
    const Window* window = FindWindowOf(control);
    return window != nullptr && (window->style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
}

HWND NextTabStop(HWND dialog, HWND from, bool backwards) {
    const std::vector<HWND> controls = ControlsOf(dialog);
    return NextOf(controls, ControlAround(from, controls), backwards, IsTabStop);
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

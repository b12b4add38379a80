#include "platform/qt/control.h"

#include "platform/qt/graphics.h"
#include "platform/qt/window_class.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<const ControlKind*, 13> kControlKinds = {
    &kPushButton,   &kDefaultPushButton, &kCheckBox,  &kAutoCheckBox,
    &kRadioButton,  &kAutoRadioButton,   &kGroupBox,  &kOwnerDrawnButton,
    &kEtchedFrame,  &kStaticText,        &kScrollBar, &kEdit,
    &kDropDownList,
};

LRESULT SetText(HWND handle, LPARAM text) {
    const LRESULT result = DefWindowProcA(handle, WM_SETTEXT, 0, text);
    const Window* window = FindWindowOf(handle);
    if (window != nullptr && window->control->showText != nullptr && !window->widget.isNull()) {
        window->control->showText(*window->widget, ToQString(window->text));
    }
    return result;
}

} // namespace

const ControlKind* FindControlKind(std::string_view className, DWORD style) {
    const auto found = std::ranges::find_if(kControlKinds, [=](const ControlKind* kind) {
        return SameClassName(kind->className, className) && (style & kind->typeMask) == kind->type;
    });
    return found == kControlKinds.end() ? nullptr : *found;
}

bool IsControlClass(std::string_view className) {
    return std::ranges::any_of(kControlKinds, [=](const ControlKind* kind) {
        return SameClassName(kind->className, className);
    });
}

LRESULT DefControlProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr) {
        return 0;
    }
    switch (message) {
    case WM_SETTEXT:
        return SetText(handle, lParam);
    case WM_SETFONT:
        window->font = reinterpret_cast<HFONT>(wParam);
        if (!window->widget.isNull()) {
            window->widget->setFont(FontOfHandle(window->font));
        }
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(window->font);
    default:
        return DefWindowProcA(handle, message, wParam, lParam);
    }
}

void NotifyParent(HWND control, UINT code) {
    const Window* window = FindWindowOf(control);
    if (window != nullptr) {
        SendMessageA(window->parent, WM_COMMAND, MAKEWPARAM(window->id, code),
                     reinterpret_cast<LPARAM>(control));
    }
}

// Push buttons. The default one is what Enter presses.
#include "platform/qt/button_style.h"

#include <QPushButton>

namespace {

QWidget* Make(const Window& window, QWidget* parent) {
    auto* button = new QPushButton(parent);
    PrepareButton(window, *button);
    button->setAutoDefault(false);
    button->setDefault((window.style & kButtonTypeMask) == BS_DEFPUSHBUTTON);
    return button;
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* button = static_cast<QPushButton*>(WidgetOf(handle));
    if (button == nullptr) {
        return DefButtonProc(handle, message, wParam, lParam);
    }
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_BUTTON | (button->isDefault() ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
    case BM_SETSTYLE:
        button->setDefault((wParam & kButtonTypeMask) == BS_DEFPUSHBUTTON);
        return 0;
    default:
        return DefButtonProc(handle, message, wParam, lParam);
    }
}

} // namespace

const ControlKind kPushButton = {"Button", kButtonTypeMask, BS_PUSHBUTTON,
                                 Make,     ShowButtonText,  Procedure};
const ControlKind kDefaultPushButton = {"Button", kButtonTypeMask, BS_DEFPUSHBUTTON,
                                        Make,     ShowButtonText,  Procedure};

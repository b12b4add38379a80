// Radio buttons. The automatic ones take the mark from the others of their group; the marked one is
// the one that Tab goes to.
#include "platform/qt/button_style.h"
#include "platform/qt/navigation.h"

#include <QRadioButton>

namespace {

bool IsAutomatic(const Window& window) {
    return window.kind == WindowKind::Control && window.control == &kAutoRadioButton;
}

class RadioButton : public QRadioButton {
public:
    RadioButton(HWND handle, QWidget* parent) : QRadioButton(parent), handle_(handle) {
        setAutoExclusive(false);
    }

protected:
    void nextCheckState() override {
        const Window* window = FindWindowOf(handle_);
        if (window == nullptr || !IsAutomatic(*window)) {
            return;
        }
        for (HWND member : GroupOf(handle_)) {
            const Window* other = FindWindowOf(member);
            if (member != handle_ && other != nullptr && IsAutomatic(*other)) {
                SendMessageA(member, BM_SETCHECK, BST_UNCHECKED, 0);
            }
        }
        SendMessageA(handle_, BM_SETCHECK, BST_CHECKED, 0);
    }

private:
    HWND handle_;
};

QWidget* Make(const Window& window, QWidget* parent) {
    auto* button = new RadioButton(window.handle, parent);
    PrepareButton(window, *button);
    return button;
}

LRESULT SetCheck(Window& window, RadioButton& button, bool checked) {
    button.setChecked(checked);
    window.style = checked ? window.style | WS_TABSTOP : window.style & ~WS_TABSTOP;
    return 0;
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* button = static_cast<RadioButton*>(WidgetOf(handle));
    if (button == nullptr) {
        return DefButtonProc(handle, message, wParam, lParam);
    }
    switch (message) {
    case BM_GETCHECK:
        return button->isChecked() ? BST_CHECKED : BST_UNCHECKED;
    case BM_SETCHECK:
        return SetCheck(*FindWindowOf(handle), *button, wParam != BST_UNCHECKED);
    case WM_GETDLGCODE:
        return DLGC_BUTTON | DLGC_RADIOBUTTON;
    default:
        return DefButtonProc(handle, message, wParam, lParam);
    }
}

} // namespace

const ControlKind kRadioButton = {"Button", kButtonTypeMask, BS_RADIOBUTTON,
                                  Make,     ShowButtonText,  Procedure};
const ControlKind kAutoRadioButton = {"Button", kButtonTypeMask, BS_AUTORADIOBUTTON,
                                      Make,     ShowButtonText,  Procedure};

// Check boxes. The automatic ones change their mark themselves.
#include "platform/qt/button_style.h"

#include <QCheckBox>

namespace {

class CheckBox : public QCheckBox {
public:
    CheckBox(bool automatic, QWidget* parent) : QCheckBox(parent), automatic_(automatic) {}

protected:
    void nextCheckState() override {
        if (automatic_) {
            setChecked(!isChecked());
        }
    }

private:
    bool automatic_;
};

QWidget* Make(const Window& window, QWidget* parent) {
    const bool automatic = (window.style & kButtonTypeMask) == BS_AUTOCHECKBOX;
    auto* box = new CheckBox(automatic, parent);
    PrepareButton(window, *box);
    return box;
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* box = static_cast<CheckBox*>(WidgetOf(handle));
    if (message == BM_GETCHECK && box != nullptr) {
        return box->isChecked() ? BST_CHECKED : BST_UNCHECKED;
    }
    if (message == BM_SETCHECK && box != nullptr) {
        box->setChecked(wParam != BST_UNCHECKED);
        return 0;
    }
    return DefButtonProc(handle, message, wParam, lParam);
}

} // namespace

const ControlKind kCheckBox = {"Button", kButtonTypeMask, BS_CHECKBOX,
                               Make,     ShowButtonText,  Procedure};
const ControlKind kAutoCheckBox = {"Button", kButtonTypeMask, BS_AUTOCHECKBOX,
                                   Make,     ShowButtonText,  Procedure};

#include "platform/qt/button_style.h"

void PrepareButton(const Window& window, QAbstractButton& button) {
    button.setText(ToQString(window.text));
    button.setFocusPolicy(Qt::StrongFocus);
    QObject::connect(&button, &QAbstractButton::clicked,
                     [handle = window.handle] { NotifyParent(handle, BN_CLICKED); });
}

void ShowButtonText(QWidget& widget, const QString& text) {
    static_cast<QAbstractButton&>(widget).setText(text);
}

LRESULT DefButtonProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETDLGCODE) {
        return DLGC_BUTTON;
    }
    if (message == BM_CLICK) {
        if (auto* button = static_cast<QAbstractButton*>(WidgetOf(handle))) {
            button->click();
        }
        return 0;
    }
    return DefControlProc(handle, message, wParam, lParam);
}

// Frames with a title.
#include "platform/qt/button_style.h"

#include <QGroupBox>

namespace {

void ShowText(QWidget& widget, const QString& text) {
    static_cast<QGroupBox&>(widget).setTitle(text);
}

QWidget* Make(const Window& window, QWidget* parent) {
    auto* box = new QGroupBox(ToQString(window.text), parent);
    box->setAttribute(Qt::WA_TransparentForMouseEvents);
    box->lower();
    return box;
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_GETDLGCODE ? DLGC_STATIC : DefControlProc(handle, message, wParam, lParam);
}

} // namespace

const ControlKind kGroupBox = {"Button", kButtonTypeMask, BS_GROUPBOX, Make, ShowText, Procedure};

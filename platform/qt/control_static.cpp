// Texts.
#include "platform/qt/control.h"

#include <QLabel>
#include <QPainter>
#include <QStyle>

namespace {

constexpr DWORD kTypeMask = 0x1F;

Qt::Alignment AlignmentOf(DWORD style) {
    switch (style & kTypeMask) {
    case SS_CENTER:
        return Qt::AlignHCenter;
    case SS_RIGHT:
        return Qt::AlignRight;
    default:
        return Qt::AlignLeft;
    }
}

// A label shows the underlined letter only for a buddy; here the dialog knows who comes next.
class StaticText : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const int flags = static_cast<int>(alignment()) | Qt::TextWordWrap | Qt::TextShowMnemonic;
        style()->drawItemText(&painter, rect(), flags, palette(), isEnabled(), text(),
                              QPalette::WindowText);
    }
};

void ShowText(QWidget& widget, const QString& text) {
    static_cast<StaticText&>(widget).setText(text);
}

QWidget* Make(const Window& window, QWidget* parent) {
    auto* label = new StaticText(ToQString(window.text), parent);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(AlignmentOf(window.style) | Qt::AlignTop);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return label;
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_GETDLGCODE ? DLGC_STATIC : DefControlProc(handle, message, wParam, lParam);
}

} // namespace

const ControlKind kStaticText = {"Static", 0, 0, Make, ShowText, Procedure};

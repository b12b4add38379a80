// Frames with a title.
#include "platform/qt/button_style.h"

#include <QGroupBox>
#include <QPainter>
#include <QStyle>
#include <qdrawutil.h>

namespace {

constexpr int kTitleIndent = 8;
constexpr int kTitleMargin = 2;

// A plain etched line. Styles tint the inside, which panes with a background of their own show up.
class GroupBox : public QGroupBox {
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QSize text = fontMetrics().size(Qt::TextShowMnemonic, title());
        qDrawShadeRect(&painter, rect().adjusted(0, text.height() / 2, 0, 0), palette(), true);
        if (title().isEmpty()) {
            return;
        }
        const QRect place(QPoint(kTitleIndent, 0), text);
        painter.fillRect(place.adjusted(-kTitleMargin, 0, kTitleMargin, 0), palette().window());
        style()->drawItemText(&painter, place, Qt::TextShowMnemonic, palette(), isEnabled(),
                              title(), QPalette::WindowText);
    }
};

void ShowText(QWidget& widget, const QString& text) {
    static_cast<QGroupBox&>(widget).setTitle(text);
}

QWidget* Make(const Window& window, QWidget* parent) {
    auto* box = new GroupBox(ToQString(window.text), parent);
    box->setAttribute(Qt::WA_TransparentForMouseEvents);
    box->lower();
    return box;
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_GETDLGCODE ? DLGC_STATIC : DefControlProc(handle, message, wParam, lParam);
}

} // namespace

const ControlKind kGroupBox = {"Button", kButtonTypeMask, BS_GROUPBOX, Make, ShowText, Procedure};

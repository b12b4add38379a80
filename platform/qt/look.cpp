#include "platform/qt/look.h"

#include "platform/qt/graphics.h"

#include <QApplication>
#include <QFrame>
#include <QPalette>
#include <QPointer>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QWidget>

namespace {

constexpr int kHighlightColor = 13;

class LayerStyle : public QProxyStyle {
public:
    LayerStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        switch (hint) {
        case SH_UnderlineShortcut:
            return 1;
        case SH_ComboBox_PopupFrameStyle:
            return static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain);
        case SH_ComboBox_Popup:
        case SH_ScrollBar_Transient:
        case SH_ScrollBar_LeftClickAbsolutePosition:
        case SH_ScrollBar_MiddleClickAbsolutePosition:
        case SH_ScrollBar_ContextMenu:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, result);
        }
    }
};

// Belongs to the application.
QStyle* Style() {
    static auto& style = *new QPointer<LayerStyle>;
    if (style.isNull()) {
        style = new LayerStyle;
        style->setParent(qApp);
    }
    return style;
}

QPalette Palette() {
    const QColor face = SystemColor(COLOR_BTNFACE);
    QPalette palette(face, face);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Highlight, SystemColor(kHighlightColor));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

void ApplyLook(QWidget& widget) {
    widget.setStyle(Style());
    if (widget.isWindow()) {
        widget.setPalette(Palette());
        widget.setAttribute(Qt::WA_QuitOnClose, false);
    }
}

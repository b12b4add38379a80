#include "platform/qt/device_context.h"

#include <QFontMetrics>

#include <cstring>

namespace {

constexpr int kShadow = 16;
constexpr int kHighlight = 20;
constexpr int kDarkShadow = 21;
constexpr int kLightEdge = 22;

// System colours of a frame's two rings.
struct EdgeColors {
    int outerTopLeft, outerBottomRight, innerTopLeft, innerBottomRight;
};
constexpr EdgeColors kRaised{kLightEdge, kDarkShadow, kHighlight, kShadow};
constexpr EdgeColors kSunken{kShadow, kHighlight, kDarkShadow, kLightEdge};

// The corners at the lower left and the upper right belong to the lower right side.
void DrawRing(QPainter& painter, const QRect& ring, int topLeft, int bottomRight) {
    painter.fillRect(QRect(ring.left(), ring.top(), ring.width(), 1), SystemColor(topLeft));
    painter.fillRect(QRect(ring.left(), ring.top(), 1, ring.height()), SystemColor(topLeft));
    painter.fillRect(QRect(ring.left(), ring.bottom(), ring.width(), 1), SystemColor(bottomRight));
    painter.fillRect(QRect(ring.right(), ring.top(), 1, ring.height()), SystemColor(bottomRight));
}

int TextFlags(UINT format) {
    const bool singleLine = (format & DT_SINGLELINE) != 0;
    const bool centred = (format & DT_CENTER) != 0;
    const bool middle = singleLine && (format & DT_VCENTER) != 0;
    return (centred ? Qt::AlignHCenter : Qt::AlignLeft) |
           (middle ? Qt::AlignVCenter : Qt::AlignTop) | Qt::TextShowMnemonic |
           (singleLine ? Qt::TextSingleLine : 0);
}

void SetUpText(QPainter& painter, const DeviceContext& context) {
    painter.setFont(FontOfHandle(context.font));
    painter.setPen(ToQColor(context.textColor));
    painter.setBackground(Qt::white);
    painter.setBackgroundMode(context.backgroundMode == OPAQUE ? Qt::OpaqueMode
                                                               : Qt::TransparentMode);
}

// How much of a text's width lies left of the point that it is aligned to.
int WidthBeforePoint(UINT align, int width) {
    switch (align & TA_CENTER) {
    case TA_CENTER:
        return width / 2;
    case TA_RIGHT:
        return width;
    default:
        return 0;
    }
}

} // namespace

int FillRect(HDC dc, const RECT* rect, HBRUSH brush) {
    QPainter* painter = PainterOf(dc);
    const QColor color = BrushColor(brush);
    if (painter == nullptr || rect == nullptr || !color.isValid()) {
        return 0;
    }
    if (!IsRectEmpty(rect)) {
        painter->fillRect(ToQRect(*rect), color);
    }
    return 1;
}

int DrawTextA(HDC dc, LPCSTR text, int length, RECT* rect, UINT format) {
    QPainter* painter = PainterOf(dc);
    if (painter == nullptr || text == nullptr || rect == nullptr) {
        return 0;
    }
    const QRect area = ToQRect(*rect);
    SetUpText(*painter, *FindDeviceContext(dc));
    QRect drawn;
    painter->drawText(area, TextFlags(format), QString::fromLatin1(text, length < 0 ? -1 : length),
                      &drawn);
    return drawn.bottom() + 1 - area.top();
}

BOOL TextOutA(HDC dc, int x, int y, LPCSTR text, int length) {
    QPainter* painter = PainterOf(dc);
    if (painter == nullptr || text == nullptr || length < 0) {
        return FALSE;
    }
    const DeviceContext& context = *FindDeviceContext(dc);
    SetUpText(*painter, context);
    const QString line = QString::fromLatin1(text, length);
    const QFontMetrics metrics = painter->fontMetrics();
    const int left = x - WidthBeforePoint(context.textAlign, metrics.horizontalAdvance(line));
    const int top = (context.textAlign & TA_BOTTOM) != 0 ? y - metrics.height() : y;
    painter->drawText(left, top + metrics.ascent(), line);
    return TRUE;
}

// Whole frames of two pixels only.
BOOL DrawEdge(HDC dc, RECT* rect, UINT edge, UINT flags) {
    QPainter* painter = PainterOf(dc);
    if (painter == nullptr || rect == nullptr || flags != BF_RECT ||
        (edge != EDGE_RAISED && edge != EDGE_SUNKEN)) {
        return FALSE;
    }
    const EdgeColors& colors = edge == EDGE_RAISED ? kRaised : kSunken;
    const QRect outer = ToQRect(*rect);
    DrawRing(*painter, outer, colors.outerTopLeft, colors.outerBottomRight);
    DrawRing(*painter, outer.adjusted(1, 1, -1, -1), colors.innerTopLeft, colors.innerBottomRight);
    return TRUE;
}

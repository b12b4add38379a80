// Lines and rectangles, one pixel thin.
#include "platform/qt/device_context.h"
#include "platform/qt/drawing_objects.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

// Nothing is drawn with a pen that is gone.
QColor PenColor(const DeviceContext& context) {
    const DrawingObject* pen = FindDrawingObject(context.pen);
    return pen == nullptr ? QColor(Qt::transparent) : ToQColor(pen->color);
}

void FillIfValid(QPainter& painter, const QRect& area, const QColor& color) {
    if (color.isValid()) {
        painter.fillRect(area, color);
    }
}

void DrawFrame(QPainter& painter, const QRect& area, const QColor& color) {
    const QRegion frame = QRegion(area) - area.adjusted(1, 1, -1, -1);
    for (const QRect& side : frame) {
        painter.fillRect(side, color);
    }
}

// One pixel in each column of a flat line and in each row of a steep one, without the last.
void DrawLine(QPainter& painter, QPoint from, QPoint to, const QColor& color) {
    const double dx = to.x() - from.x();
    const double dy = to.y() - from.y();
    const int steps = static_cast<int>(std::max(std::abs(dx), std::abs(dy)));
    for (int step = 0; step < steps; ++step) {
        const double share = static_cast<double>(step) / steps;
        painter.fillRect(from.x() + qRound(dx * share), from.y() + qRound(dy * share), 1, 1, color);
    }
}

} // namespace

extern "C" {

BOOL MoveToEx(HDC dc, int x, int y, POINT* before) {
    DeviceContext* context = FindDeviceContext(dc);
    if (context == nullptr) {
        return FALSE;
    }
    const QPoint old = std::exchange(context->position, QPoint(x, y));
    if (before != nullptr) {
        *before = {old.x(), old.y()};
    }
    return TRUE;
}

BOOL LineTo(HDC dc, int x, int y) {
    QPainter* painter = PainterOf(dc);
    if (painter == nullptr) {
        return FALSE;
    }
    DeviceContext& context = *FindDeviceContext(dc);
    const QPoint from = std::exchange(context.position, QPoint(x, y));
    DrawLine(*painter, from, context.position, PenColor(context));
    return TRUE;
}

BOOL Rectangle(HDC dc, int left, int top, int right, int bottom) {
    QPainter* painter = PainterOf(dc);
    if (painter == nullptr) {
        return FALSE;
    }
    const DeviceContext& context = *FindDeviceContext(dc);
    const QRect area(left, top, right - left, bottom - top);
    if (!area.isEmpty()) {
        DrawFrame(*painter, area, PenColor(context));
        FillIfValid(*painter, area.adjusted(1, 1, -1, -1), BrushColor(context.brush));
    }
    return TRUE;
}

} // extern "C"

// A context's state and its painter.
#pragma once

#include "platform/qt/graphics.h"

#include <QPainter>

#include <memory>

constexpr QImage::Format kSurfaceFormat = QImage::Format_RGB32;

struct DeviceContext {
    QImage* surface;
    QRegion clip;
    HGDIOBJ font;
    HGDIOBJ brush;
    HGDIOBJ pen;
    QPoint position; // where the next line begins
    int backgroundMode;
    COLORREF textColor;
    UINT textAlign;
    HGDIOBJ bitmap;                   // of a context in memory alone
    std::shared_ptr<QImage> inMemory; // its picture
    QPainter painter;                 // begun by the first operation that draws
};

// Null for a null, stale or wrong handle.
DeviceContext* FindDeviceContext(HDC dc);

// Begins the painting if need be. Null as above, and when the surface cannot be painted on.
QPainter* PainterOf(HDC dc);

constexpr QRect ToQRect(const RECT& rect) {
    return {QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1)};
}

inline QColor ToQColor(COLORREF color) {
    return QColor(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF);
}

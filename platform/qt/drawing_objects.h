// What handles of brushes, pens, fonts and bitmaps stand for. Plain data, so that a library may
// make them while it is being loaded.
#pragma once

#include "platform/win32.h"

#include <QImage>

#include <memory>

enum class DrawingObjectKind { Brush, Font, Pen, Bitmap };

struct DrawingObject {
    DrawingObjectKind kind;
    COLORREF color;                            // of a brush or pen
    LOGFONTA font;                             // of a font
    bool isPermanent;                          // DeleteObject leaves it alone
    std::shared_ptr<QImage> picture = nullptr; // of a bitmap
};

// 0 when there are too many.
HGDIOBJ AddDrawingObject(const DrawingObject& object);

// Null for a null, stale or wrong handle. The address holds until the next object is made.
const DrawingObject* FindDrawingObject(HGDIOBJ handle);

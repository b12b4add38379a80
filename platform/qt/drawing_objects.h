// What handles of brushes, pens and fonts stand for. Plain data, so that a library may make them
// while it is being loaded.
#pragma once

#include "platform/win32.h"

enum class DrawingObjectKind { Brush, Font, Pen };

struct DrawingObject {
    DrawingObjectKind kind;
    COLORREF color;   // of a brush or pen
    LOGFONTA font;    // of a font
    bool isPermanent; // DeleteObject leaves it alone
};

// 0 when there are too many.
HGDIOBJ AddDrawingObject(const DrawingObject& object);

// Null for a null, stale or wrong handle. The address holds until the next object is made.
const DrawingObject* FindDrawingObject(HGDIOBJ handle);

// Drawing objects and device contexts, as the window code of this layer needs them.
//
// Handles are plain descriptions until something is drawn: making a font, a brush or a cursor while
// a library is being loaded touches no Qt object.
#pragma once

#include "platform/win32.h"

#include <QColor>
#include <QCursor>
#include <QFont>
#include <QImage>
#include <QRegion>
#include <QSize>

// Opens a context that paints on `surface` (Format_RGB32), clipped to `clip`. One context at a time
// paints on a surface. Closing it ends the painting and frees the handle.
ZQ_API HDC OpenDeviceContext(QImage& surface, const QRegion& clip);
ZQ_API void CloseDeviceContext(HDC dc);

// The classic colour scheme that the system draws in: button face (192, 192, 192) and its
// relatives.
ZQ_API QColor SystemColor(int index);

// The colour of a brush; a value below 256 is a system colour's number plus 1; null is no colour
// (an invalid QColor).
ZQ_API QColor BrushColor(HBRUSH brush);

// The font of a handle; the dialog font for null or a stale handle.
ZQ_API QFont FontOfHandle(HFONT font);

// A font for a dialog template, one per face and size, which lives as long as the process. "MS Sans
// Serif" and its kin become the installed sans serif font.
ZQ_API HFONT FontForTemplate(const char* face, int points);

// Width and height of the dialog base units of a template's font, in pixels: a dialog unit is a
// quarter of the width and an eighth of the height. 8 x 16 for "MS Sans Serif" 10.
ZQ_API QSize DialogBaseUnits(const char* face, int points);

// The cursor of a handle, for a widget; the arrow for null.
ZQ_API QCursor CursorOfHandle(HCURSOR cursor);

// LoadCursorA of this layer.
ZQ_API HCURSOR LoadCursorHandle(HINSTANCE instance, LPCSTR name);

// Where windows are. A window's rectangle counts its frame; client coordinates begin inside it.
#pragma once

#include "platform/qt/window.h"

#include <QRect>

// Where the client area begins in the window's widget.
QPoint ClientOrigin(const Window& window);

// Without the border; in client coordinates it begins at (0, 0).
QSize ClientSize(const Window& window);

// Where a widget as large as `client` belongs, for a window whose frame is the layer's affair.
QRect WindowRectOf(const Window& window, const QRect& client);

// Moves and sizes the window: to a place in its parent's client area, or on the screen. Sends
// nothing.
void PlaceWindow(const Window& window, const QRect& rect);

// Tells the window its client size.
void SendSize(HWND handle);

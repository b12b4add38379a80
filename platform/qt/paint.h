// The surfaces of registered windows and the paint messages that fill them.
#pragma once

#include "platform/qt/window.h"

// Fits the surface to the client area. What the class wants repainted waits for WM_PAINT.
void ResizeSurface(Window& window);

// Sends WM_PAINT when something waits for it. Afterwards nothing does, whatever the window did.
void SendPaint(HWND handle);

// Ends a painting that the window will not end any more.
void ClosePaint(HWND handle);

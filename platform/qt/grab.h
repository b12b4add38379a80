// Pictures of windows.
#pragma once

#include "platform/win32.h"

#include <QImage>

// The window with all that it holds, as it would be painted now, without the desktop's frame. Null
// for a null, stale or wrong handle.
ZQ_API QImage GrabWindow(HWND window);

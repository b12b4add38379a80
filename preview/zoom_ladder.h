// The zooms that a pane can have: 100, 50, 33, 25, 20, 16, 14, 12, 11, 10, 9, 8 and below 8 every
// whole percent down to 1.
#pragma once

#include "platform/types.h"

constexpr i32 kLargestZoom = 100;
constexpr i32 kSmallestZoom = 1;

constexpr i32 kZoomUp = -1;
constexpr i32 kZoomSnap = 0;
constexpr i32 kZoomDown = 1;

// The next rung above or below `percent`, or, for kZoomSnap, the rung that `percent` rounds down
// to. A percent that a picture cannot be shown at counts as 1 or 100. A rounded rung is no exact
// fraction of 100 and snaps to the rung below it: 33 gives 25.
i32 ZoomStep(i32 percent, i32 direction);

// Which part of a picture a pane shows: arithmetic on sizes, without windows or documents.
#pragma once

#include "platform/types.h"

struct Extent {
    i32 width;
    i32 height;

    bool IsEmpty() const { return width < 1 || height < 1; }
};

// A part of a picture in its pixels, right and bottom exclusive. Rows count as they are stored,
// from the bottom of the picture upward.
struct ViewRegion {
    i32 left;
    i32 top;
    i32 right;
    i32 bottom;

    Extent Size() const { return {right - left, bottom - top}; }
    bool operator==(const ViewRegion&) const = default;
};

struct FittedView {
    i32 zoomPercent;
    ViewRegion region;
};

// Pane and image must not be empty in any of these, and `zoomPercent` is 1 to 100.

// The largest zoom at which the whole image fits, and its centred region. An image that does not
// fit even at 1 percent shows its middle at 1 percent.
FittedView FitView(Extent pane, Extent image);

// The region at another zoom with the same centre, as far as the image's edges let it.
ViewRegion ZoomedRegion(const ViewRegion& region, i32 zoomPercent, Extent pane, Extent image);

// The region after a drag of the picture by dx, dy screen pixels (y downward). It keeps its size
// and stops at the image's edges.
ViewRegion PannedRegion(const ViewRegion& region, i32 dx, i32 dy, i32 zoomPercent, Extent image);

// The size in screen pixels, at least 1 x 1, at which a region is shown.
Extent ShownSize(const ViewRegion& region, i32 zoomPercent);

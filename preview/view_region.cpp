#include "preview/view_region.h"

#include "preview/zoom_ladder.h"

#include <algorithm>

namespace {

i32 FittingPercent(i64 pane, i64 image) {
    return static_cast<i32>(
        std::clamp<i64>((100 * pane + image / 2) / image, kSmallestZoom, kLargestZoom));
}

// One direction of a region.
struct Span {
    i32 first;
    i32 end;
};

Span FittedSpan(i64 pane, i32 image, i32 zoomPercent) {
    const i64 visible = (100 * pane + zoomPercent / 2) / zoomPercent;
    const i32 length = static_cast<i32>(std::min<i64>(image, visible));
    const i32 first = (image - length) / 2;
    return {first, first + length};
}

Span ZoomedSpan(Span span, i32 zoomPercent, i64 pane, i32 image) {
    const i32 length = static_cast<i32>(std::clamp<i64>(100 * pane / zoomPercent, 1, image));
    const i64 centre = (static_cast<i64>(span.first) + span.end) / 2;
    const i32 first =
        static_cast<i32>(std::clamp<i64>(centre - (length + 1) / 2, 0, image - length));
    return {first, first + length};
}

Span MovedSpan(Span span, i64 shift, i32 image) {
    const i64 room = std::max<i64>(static_cast<i64>(image) - (span.end - span.first), 0);
    const i32 first = static_cast<i32>(std::clamp<i64>(span.first + shift, 0, room));
    return {first, first + (span.end - span.first)};
}

ViewRegion RegionOf(Span columns, Span rows) {
    return {columns.first, rows.first, columns.end, rows.end};
}

i32 ShownLength(i64 length, i32 zoomPercent) {
    return static_cast<i32>(std::max<i64>((length * zoomPercent + 50) / 100, 1));
}

} // namespace

FittedView FitView(Extent pane, Extent image) {
    const i32 percent = std::min(FittingPercent(pane.width, image.width),
                                 FittingPercent(pane.height, image.height));
    const i32 zoom = ZoomStep(percent, kZoomSnap);
    return {zoom, RegionOf(FittedSpan(pane.width, image.width, zoom),
                           FittedSpan(pane.height, image.height, zoom))};
}

ViewRegion ZoomedRegion(const ViewRegion& region, i32 zoomPercent, Extent pane, Extent image) {
    return RegionOf(
        ZoomedSpan({region.left, region.right}, zoomPercent, pane.width, image.width),
        ZoomedSpan({region.top, region.bottom}, zoomPercent, pane.height, image.height));
}

ViewRegion PannedRegion(const ViewRegion& region, i32 dx, i32 dy, i32 zoomPercent, Extent image) {
    // The picture follows the hand: columns move against the drag. Stored rows count upward and
    // screen rows downward, so that rows move with it.
    const i64 columns = -static_cast<i64>(dx) * 100 / zoomPercent;
    const i64 rows = static_cast<i64>(dy) * 100 / zoomPercent;
    return RegionOf(MovedSpan({region.left, region.right}, columns, image.width),
                    MovedSpan({region.top, region.bottom}, rows, image.height));
}

Extent ShownSize(const ViewRegion& region, i32 zoomPercent) {
    const Extent size = region.Size();
    return {ShownLength(size.width, zoomPercent), ShownLength(size.height, zoomPercent)};
}

#include "preview/zoom_ladder.h"

#include <algorithm>

namespace {

// From here down the rungs are whole percents; above, they are 100 / n.
constexpr i32 kFirstWholeRung = 8;

i32 StepUp(i32 percent) {
    if (percent < kFirstWholeRung) {
        return percent + 1;
    }
    return kLargestZoom / std::max(kLargestZoom / percent - 1, 1);
}

i32 StepDown(i32 percent) {
    if (percent <= kFirstWholeRung) {
        return percent - 1;
    }
    return kLargestZoom / (kLargestZoom / percent + 1);
}

i32 Snap(i32 percent) {
    const i32 roundedUpRatio = (kLargestZoom + percent - 1) / percent;
    return kLargestZoom / roundedUpRatio;
}

} // namespace

i32 ZoomStep(i32 percent, i32 direction) {
    percent = std::clamp(percent, kSmallestZoom, kLargestZoom);
    if (direction == kZoomSnap) {
        return Snap(percent);
    }
    return direction == kZoomUp ? StepUp(percent) : std::max(StepDown(percent), kSmallestZoom);
}

#include "preview/view_region.h"

#include "preview/zoom_ladder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>

std::ostream& operator<<(std::ostream& out, const ViewRegion& region) {
    return out << '(' << region.left << ", " << region.top << ", " << region.right << ", "
               << region.bottom << ')';
}

namespace {

constexpr i32 kRungs[] = {100, 50, 33, 25, 20, 16, 14, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1};

TEST(ZoomLadder, StepsFromRungToRung) {
    for (std::size_t i = 0; i + 1 < std::size(kRungs); ++i) {
        EXPECT_EQ(ZoomStep(kRungs[i], kZoomDown), kRungs[i + 1]) << "down from " << kRungs[i];
        EXPECT_EQ(ZoomStep(kRungs[i + 1], kZoomUp), kRungs[i]) << "up from " << kRungs[i + 1];
    }
}

TEST(ZoomLadder, SnapRoundsEveryPercentDownOntoARung) {
    for (i32 percent = 1; percent <= 100; ++percent) {
        const i32 snapped = ZoomStep(percent, kZoomSnap);
        EXPECT_LE(snapped, percent);
        EXPECT_NE(std::find(std::begin(kRungs), std::end(kRungs), snapped), std::end(kRungs))
            << snapped;
    }
    const struct {
        i32 percent, snapped;
    } cases[] = {{100, 100}, {99, 50}, {51, 50}, {50, 50}, {49, 33}, {33, 25}, {23, 20},
                 {10, 10},   {8, 7},   {7, 6},   {5, 5},   {3, 2},   {2, 2},   {1, 1}};
    for (const auto& [percent, snapped] : cases) {
        EXPECT_EQ(ZoomStep(percent, kZoomSnap), snapped) << percent;
    }
}

TEST(FitView, ShowsTheMiddleOfTheImageAtTheLargestZoomThatFits) {
    const struct {
        Extent pane, image;
        i32 zoom;
        ViewRegion region;
    } cases[] = {
        {{90, 60}, {1, 1}, 100, {0, 0, 1, 1}},
        {{90, 60}, {90, 60}, 100, {0, 0, 90, 60}},
        {{90, 60}, {91, 60}, 50, {0, 0, 91, 60}},
        {{90, 90}, {400, 400}, 20, {0, 0, 400, 400}},
        {{90, 60}, {6000, 4000}, 2, {750, 500, 5250, 3500}}, // 1.5 percent would fit all of it
        {{90, 60}, {30, 4000}, 2, {0, 500, 30, 3500}},
        {{90, 60}, {20000, 3}, 1, {5500, 0, 14500, 3}}, // too wide even for 1 percent
        {{2000, 1}, {30000000, 1}, 1, {14900000, 0, 15100000, 1}},
    };
    for (const auto& [pane, image, zoom, region] : cases) {
        const FittedView view = FitView(pane, image);
        EXPECT_EQ(view.zoomPercent, zoom) << image.width << " x " << image.height;
        EXPECT_EQ(view.region, region);
    }
}

TEST(ZoomedRegion, KeepsItsCentreAsFarAsTheEdgesAllow) {
    const struct {
        ViewRegion region;
        i32 zoom;
        i32 pane;
        i32 first, end; // of columns and of rows
    } cases[] = {
        {{0, 0, 400, 400}, 25, 90, 20, 380},    {{0, 0, 400, 400}, 33, 90, 64, 336},
        {{0, 0, 400, 400}, 100, 90, 155, 245},  {{0, 0, 400, 400}, 100, 91, 154, 245},
        {{0, 0, 90, 90}, 50, 90, 0, 180},       {{310, 310, 400, 400}, 50, 90, 220, 400},
        {{155, 155, 245, 245}, 20, 90, 0, 400}, {{0, 0, 400, 400}, 100, 1, 199, 200},
    };
    for (const auto& [region, zoom, pane, first, end] : cases) {
        EXPECT_EQ(ZoomedRegion(region, zoom, {pane, pane}, {400, 400}),
                  (ViewRegion{first, first, end, end}))
            << region << " at " << zoom;
    }
}

TEST(PannedRegion, FollowsTheHandAndStopsAtTheEdges) {
    const ViewRegion start{100, 100, 200, 220};
    const struct {
        i32 dx, dy, zoom;
        ViewRegion region;
    } cases[] = {
        {3, 0, 50, {94, 100, 194, 220}},
        {-3, 0, 50, {106, 100, 206, 220}},
        {1, 0, 33, {97, 100, 197, 220}}, // 3.03 layer pixels
        {-1, 0, 33, {103, 100, 203, 220}},
        {0, 1, 33, {100, 103, 200, 223}}, // the screen's down is the stored rows' up
        {0, -2, 100, {100, 98, 200, 218}},
        {32767, 32767, 1, {0, 280, 100, 400}},
        {-32768, -32768, 1, {300, 0, 400, 120}},
    };
    for (const auto& [dx, dy, zoom, region] : cases) {
        EXPECT_EQ(PannedRegion(start, dx, dy, zoom, {400, 400}), region)
            << dx << ", " << dy << " at " << zoom;
    }
    const ViewRegion whole{0, 0, 400, 400};
    EXPECT_EQ(PannedRegion(whole, 50, -50, 20, {400, 400}), whole);
}

TEST(ShownSize, RoundsAndIsNeverEmpty) {
    EXPECT_EQ(ShownSize({0, 0, 400, 3}, 20).width, 80);
    EXPECT_EQ(ShownSize({0, 0, 400, 3}, 20).height, 1); // 0.6
    EXPECT_EQ(ShownSize({5500, 0, 14500, 3}, 1).height, 1);
    EXPECT_EQ(ShownSize({0, 0, 30000000, 30000000}, 100).width, 30000000);
}

} // namespace

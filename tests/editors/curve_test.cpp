#include "editors/curve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

Curve After(Curve curve, const std::vector<CurvePreset>& presets) {
    for (const CurvePreset preset : presets) {
        ApplyPreset(curve, preset);
    }
    return curve;
}

} // namespace

// Values worked out by hand, or with a calculator, from the shapes' formulas.
TEST(CurvePresets, GiveTheirShapesOnTheIdentityAndComposeWhenAppliedAgain) {
    const struct {
        CurvePreset preset;
        std::vector<int> once; // at 0, 1, 64, 128, 254, 255
        int twiceAt64;
    } kTable[] = {
        {CurvePreset::Circle, {0, 23, 169, 221, 255, 255}, 240},
        {CurvePreset::Exponent, {0, 0, 42, 96, 253, 255}, 26},
        {CurvePreset::Logarithm, {0, 32, 192, 223, 255, 255}, 242},
        {CurvePreset::Sine, {0, 2, 98, 181, 255, 255}, 145},
        {CurvePreset::Arcsine, {0, 1, 41, 85, 241, 255}, 26},
        {CurvePreset::Square, {0, 0, 16, 64, 253, 255}, 1},
        {CurvePreset::Squareroot, {0, 16, 128, 181, 254, 255}, 181},
    };
    constexpr std::size_t kPlaces[] = {0, 1, 64, 128, 254, 255};
    for (const auto& row : kTable) {
        SCOPED_TRACE(static_cast<int>(row.preset));
        const Curve once = After(IdentityCurve(), {row.preset});
        for (std::size_t i = 0; i < std::size(kPlaces); ++i) {
            EXPECT_EQ(once[kPlaces[i]], row.once[i]) << "at " << kPlaces[i];
        }
        EXPECT_EQ(After(once, {row.preset})[64], row.twiceAt64);
        EXPECT_TRUE(std::ranges::is_sorted(once));
        EXPECT_EQ(After(once, {CurvePreset::Reset}), IdentityCurve());
    }
}

TEST(CurvePresets, SmoothTakesTheMeanOfAsManyNeighboursAsThereAreOnBothSides) {
    Curve constant;
    constant.fill(77);
    EXPECT_EQ(After(constant, {CurvePreset::Smooth}), constant);

    Curve curve;
    curve.fill(0);
    const u8 ends[] = {11, 20, 31, 44, 60, 71, 90};
    std::copy(std::begin(ends), std::end(ends), curve.begin());
    std::copy(std::begin(ends), std::end(ends), curve.rbegin());
    const Curve smooth = After(curve, {CurvePreset::Smooth});
    const u8 expected[] = {15, 21, 33, 47, 45};
    EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), smooth.begin()));
    EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), smooth.rbegin()));
    EXPECT_EQ(smooth[128], 0);
}

TEST(CurvePoints, LieBelowThePenAndNowhereOnTheFrame) {
    const struct {
        int x, y, curveX, curveY; // -1: nowhere
    } kTable[] = {{1, 1, 0, 255},   {99, 99, 255, 0},   {50, 50, 127, 128}, {1, 99, 0, 0},
                  {0, 0, -1, -1},   {100, 50, -1, -1},  {50, 100, -1, -1},  {50, 0, -1, -1},
                  {-5, 50, -1, -1}, {32767, 1, -1, -1}, {1, -32768, -1, -1}};
    for (const auto& row : kTable) {
        SCOPED_TRACE(testing::Message() << row.x << ", " << row.y);
        const auto point = CurvePointAt(row.x, row.y, 100, 100);
        EXPECT_EQ(point ? point->x : -1, row.curveX);
        EXPECT_EQ(point ? point->y : -1, row.curveY);
    }
    EXPECT_FALSE(CurvePointAt(1, 1, 2, 100)) << "there is no room inside the frame";
}

TEST(CurveStrokes, LeaveNoGapInEitherDirection) {
    Curve curve = IdentityCurve();
    ContinueStroke(curve, {10, 200}, {13, 101}); // to the right, falling
    EXPECT_EQ(curve[10], 10) << "the first point is the press's";
    EXPECT_EQ(curve[11], 167);
    EXPECT_EQ(curve[12], 134);
    EXPECT_EQ(curve[13], 101);

    ContinueStroke(curve, {23, 0}, {20, 10}); // to the left
    EXPECT_EQ(curve[20], 10);
    EXPECT_EQ(curve[21], 7) << "cut toward zero on the way down";
    EXPECT_EQ(curve[22], 4);
    EXPECT_EQ(curve[23], 23);

    ContinueStroke(curve, {40, 3}, {40, 250}); // upright
    EXPECT_EQ(curve[40], 250);

    ContinueStroke(curve, {255, 0}, {0, 255});
    EXPECT_TRUE(std::is_sorted(curve.rbegin() + 1, curve.rend()));
    EXPECT_EQ(curve[0], 255);
    EXPECT_EQ(curve[255], 255) << "where the stroke to the left began";
}

#include "engine/neighbourhood/gaussian_blur.h"
#include "engine/vector/targets.h"
#include "tests/support/dib_maker.h"

#include <zq/engine.h>
#include <zq/params.h>

#include <gtest/gtest.h>

#include <numeric>

namespace {

using Row = std::vector<u8>;

template <class Params>
Row Filtered(EffectId id, const Params& params, const Row& row) {
    const OwnedBlock source = MakeGreyDib(static_cast<i32>(row.size()), row);
    const OwnedBlock result(RunEffect(source.Handle(), id, &params));
    return DibCopy(result.Handle()).Row(0);
}

TEST(GaussianWeights, HaveTheirKnownValuesAndAlwaysMakeOne) {
    const std::vector<std::vector<i32>> known = {
        {124993, 923583}, {111681, 825214, 111681}, {60428, 270821, 446507, 270820}};
    for (const std::vector<i32>& weights : known) {
        const auto made = GaussianWeights(static_cast<i32>(weights.size()));
        EXPECT_TRUE(std::equal(weights.begin(), weights.end(), made.begin())) << weights.size();
    }
    for (i32 size = 2; size <= kGaussianLargest; ++size) {
        const auto weights = GaussianWeights(size);
        EXPECT_EQ(std::accumulate(weights.begin(), weights.end(), 0), 1 << 20) << size;
    }
}

TEST(EvenWindows, LeanTowardsLowerPositions) {
    EXPECT_EQ(Filtered(20, RankFilterParams{2, 1}, {10, 50, 20}), (Row{10, 50, 50}));
    EXPECT_EQ(Filtered(20, RankFilterParams{3, 0}, {10, 50, 20}), (Row{10, 10, 20}));
    EXPECT_EQ(Filtered(8, SquareSizeParams{2}, {10, 51, 20}), (Row{10, 31, 36}));
}

TEST(MedianFilter, KeepsItsToneAlongARowWhereHalfTheSamplesAreBelow) {
    Row row(1000);
    for (std::size_t x = 0; x < row.size(); ++x) {
        row[x] = x < 50 || x % 2 == 0 ? 200 : 10;
    }
    for (const i64 target : VectorTargets()) {
        UseVectorTarget(target);
        for (const i32 size : {4, 6, 14, 16, 32}) {
            const Row medians = Filtered(21, SquareSizeParams{size}, row);
            for (std::size_t x = 0; x < row.size() - 20; ++x) {
                ASSERT_EQ(medians[x], x < 50u + static_cast<u32>(size) / 2 ? 200 : 199)
                    << x << ", size " << size << ", " << VectorTargetName(target);
            }
        }
    }
    UseVectorTarget(0);
}

TEST(UnsharpMask, DarkensOneStepLaterThanItLightens) {
    // The mean of two lies halfway up each step: 3 or 5 from the samples.
    EXPECT_EQ(Filtered(18, UnsharpMaskParams{2, 100, 0}, {100, 106, 106}), (Row{100, 109, 106}));
    EXPECT_EQ(Filtered(18, UnsharpMaskParams{2, 100, 0}, {106, 100, 100}), (Row{106, 98, 100}));
    EXPECT_EQ(Filtered(18, UnsharpMaskParams{2, 100, 5}, {100, 110, 110}), (Row{100, 115, 110}));
    EXPECT_EQ(Filtered(18, UnsharpMaskParams{2, 100, 5}, {110, 100, 100}), (Row{110, 100, 100}));
}

TEST(LineSharpen, AddsHalfTheDifferenceFromBothNeighbours) {
    EXPECT_EQ(Filtered(19, LineSharpenParams{0}, {100, 100, 150, 100, 100}),
              (Row{100, 75, 200, 75, 100}));
    EXPECT_EQ(Filtered(19, LineSharpenParams{0}, {100, 100, 200, 100, 100}),
              (Row{100, 50, 255, 50, 100}));
}

TEST(UserFilter, MeetsThePictureAsItIsSeen) {
    // The cell at the top right takes from two columns to the right and two rows up.
    UserFilterParams params{};
    params.scale = 1;
    params.cells[4] = 1;
    const OwnedBlock source = MakeGreyDib(3, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    const OwnedBlock result(RunEffect(source.Handle(), 25, &params));
    const DibCopy picture(result.Handle());
    ASSERT_TRUE(picture.Valid());
    EXPECT_EQ(picture.At(0, 0), 9u);
    EXPECT_EQ(picture.At(0, 2), 9u);
    EXPECT_EQ(picture.At(2, 0), 9u);
}

TEST(EdgeFade, FallsOffWithinTheRadiusOfThePicturesEdge) {
    const Row white(23 * 23, 255);
    const OwnedBlock source = MakeGreyDib(23, white);
    const EdgeFadeParams params{10};
    const OwnedBlock result(RunEffect(source.Handle(), 68, &params));
    const DibCopy picture(result.Handle());
    ASSERT_TRUE(picture.Valid());
    EXPECT_EQ(picture.At(0, 11), 23u);
    EXPECT_EQ(picture.At(9, 11), 255u * 10 / 11);
    EXPECT_EQ(picture.At(10, 12), 255u);
}

} // namespace

#include "engine/colour/tone_adjustment.h"
#include "tests/support/dib_maker.h"

#include <zq/engine.h>
#include <zq/params.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(BuildToneTable, ClipsLiftsAndBends) {
    const auto identity = BuildToneTable(0, 0, 0);
    for (std::size_t i = 0; i < identity.size(); ++i) {
        EXPECT_EQ(identity[i], i);
    }
    const auto clippedHigh = BuildToneTable(100, 0, 0);
    EXPECT_EQ(clippedHigh[154], 253);
    EXPECT_EQ(clippedHigh[155], 255);
    const auto clippedLow = BuildToneTable(0, 0, -100);
    EXPECT_EQ(clippedLow[100], 0);
    EXPECT_EQ(clippedLow[101], 2);
    // The graph's doubled values: nothing is left between the end points.
    const auto flat = BuildToneTable(-200, 0, 200);
    EXPECT_EQ(flat[0], 0);
    EXPECT_EQ(flat[1], 200);
    EXPECT_EQ(flat[254], 200);
    EXPECT_EQ(flat[255], 255);
    EXPECT_EQ(BuildToneTable(0, -100, 0)[128], std::lround(255 * std::pow(128 / 255.0, 4.5)));
    EXPECT_EQ(BuildToneTable(0, 100, 0)[128], std::lround(255 * std::pow(128 / 255.0, 0.55)));
}

TEST(HueSaturation, TurnsPureColours) {
    struct Turn {
        i32 hue;
        i32 saturation;
        Bgr from;
        Bgr to;
    };
    const Turn turns[] = {
        {120, 0, {0, 0, 255}, {0, 255, 0}},       {-120, 0, {0, 0, 255}, {255, 0, 0}},
        {180, 0, {0, 0, 255}, {255, 255, 0}},     {0, 100, {10, 20, 200}, {200, 200, 200}},
        {0, -100, {90, 120, 150}, {30, 90, 150}}, {77, -50, {9, 9, 9}, {9, 9, 9}},
    };
    for (const Turn& turn : turns) {
        const OwnedBlock source = MakeColourDib(1, {turn.from});
        const HueSaturationParams params{turn.hue, turn.saturation};
        const OwnedBlock result(RunEffect(source.Handle(), 2, &params));
        const DibCopy picture(result.Handle());
        ASSERT_TRUE(picture.Valid());
        EXPECT_EQ(picture.ColourAt(0, 0), turn.to) << turn.hue << ' ' << turn.saturation;
    }
}

TEST(ToneMaps, HaveTheirKnownValues) {
    struct Map {
        EffectId id;
        i32 word;
        std::vector<u8> from;
        std::vector<u8> to;
    };
    const Map maps[] = {
        {7, 128, {0, 128, 129, 255}, {0, 0, 255, 255}},
        {23, 0, {0, 127, 128, 200, 255}, {0, 127, 127, 55, 0}},
        {24, 0, {0, 1, 3, 63, 255}, {0, 32, 64, 191, 255}},
        {70, 128, {0, 64, 127, 128, 255}, {0, 128, 253, 255, 255}},
        {70, -128, {0, 255}, {0, 128}},
        {70, 0, {0, 255}, {0, 0}},
        {5, 0, {200, 200, 10, 200}, {51, 51, 0, 51}},
    };
    for (const Map& map : maps) {
        const OwnedBlock source = MakeGreyDib(static_cast<i32>(map.from.size()), map.from);
        const OwnedBlock result(RunEffect(source.Handle(), map.id, &map.word));
        EXPECT_EQ(DibCopy(result.Handle()).Row(0), map.to) << map.id << ' ' << map.word;
    }
}

} // namespace

#include "engine/engine.h"
#include "tests/support/leak_guard.h"

#include <array>
#include <string>

namespace {

constexpr i32 kSide = 101;

// Each pixel tells where it stands: blue its column, green its row.
OwnedBlock MakeMap() {
    std::vector<Bgr> pixels;
    for (i32 y = 0; y < kSide; ++y) {
        for (i32 x = 0; x < kSide; ++x) {
            pixels.push_back({static_cast<u8>(x), static_cast<u8>(y), 0});
        }
    }
    return MakeColourDib(kSide, pixels);
}

struct WarpCase {
    std::string name;
    EffectId id;
    std::array<i32, 2> record;
    Bgr origin;
};

class Distortion : public LeakGuardTest {};

TEST_F(Distortion, WarpsTakeAPixelHalfwayToTheRightRimFromTheKnownPlace) {
    const WarpCase cases[] = {
        {"cone", 48, {100, 0}, {88, 50, 0}},
        {"arcsine bulge", 55, {0, 0}, {66, 50, 0}},
        {"arcsine bulge by its record", 64, {2, -7}, {66, 50, 0}},
        {"fisheye", 41, {100, 0}, {59, 50, 0}},
        {"spiral", 50, {50, 0}, {25, 50, 0}},
        {"whirlpool", 49, {50, 0}, {67, 32, 0}},
        {"quarter turn", 57, {3, 1}, {65, 70, 0}},
        {"quarter turn that pulls", 57, {4, 1}, {62, 67, 0}},
    };
    const OwnedBlock map = MakeMap();
    for (const WarpCase& warp : cases) {
        SCOPED_TRACE(warp.name);
        const OwnedBlock result(RunEffect(map.Handle(), warp.id, warp.record.data()));
        const DibCopy picture(result.Handle());
        ASSERT_TRUE(picture.Valid());
        EXPECT_EQ(picture.ColourAt(75, 50), warp.origin);
        EXPECT_EQ(picture.ColourAt(50, 50), (Bgr{50, 50, 0})) << "the centre moved";
        EXPECT_EQ(picture.ColourAt(100, 50), (Bgr{100, 50, 0})) << "the rim moved";
        EXPECT_EQ(picture.ColourAt(0, 0), (Bgr{0, 0, 0})) << "a corner moved";
    }
}

TEST_F(Distortion, ArcsineStretchMixesTheColumnsOfASmallRow) {
    const OwnedBlock row = MakeGreyDib(8, {0, 32, 64, 96, 128, 160, 192, 224});
    const OwnedBlock result(RunEffect(row.Handle(), 66, nullptr));
    const DibCopy picture(result.Handle());
    ASSERT_TRUE(picture.Valid());
    EXPECT_EQ(picture.Row(0), (std::vector<u8>{0, 58, 85, 107, 128, 148, 170, 197}));
}

} // namespace

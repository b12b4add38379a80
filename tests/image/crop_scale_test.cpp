#include "image/crop_scale.h"

#include "tests/support/engine_probe.h"
#include "tests/support/leak_guard.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <random>

namespace {

using CropAndScale = LeakGuardTest;

struct Region {
    i32 x, y, width, height, targetWidth, targetHeight;
};

DibHandle Scale(const OwnedBlock& source, const Region& r) {
    return CropAndScaleDib(source.Handle(), r.x, r.y, r.width, r.height, r.targetWidth,
                           r.targetHeight);
}

// ---- The plain rule, pixel by pixel
// --------------------------------------------------------------

struct Place {
    i32 index;
    double eighths; // of the pixel at `index`; the rest is the next one's
    bool inside;
};

Place PlaceOf(i32 i, i32 start, i32 region, i32 target, i32 sourceLength) {
    double position = start;
    for (i32 k = 0; k < i; ++k) {
        position += static_cast<double>(region) / target;
    }
    const double whole = std::trunc(position);
    if (whole >= sourceLength - 1) {
        return {sourceLength - 1, 8, whole < sourceLength};
    }
    return {static_cast<i32>(whole), std::floor((whole + 1 - position) * 8 + 0.5), true};
}

u8 MixedByte(const DibCopy& source, const Place& column, const Place& row, u32 channel) {
    double sum = 32;
    for (i32 dy = 0; dy < 2; ++dy) {
        for (i32 dx = 0; dx < 2; ++dx) {
            const double weight = (dx == 0 ? column.eighths : 8 - column.eighths) *
                                  (dy == 0 ? row.eighths : 8 - row.eighths);
            if (weight != 0) {
                sum += weight * source.At(column.index + dx, row.index + dy, channel);
            }
        }
    }
    return static_cast<u8>(std::floor(sum / 64));
}

std::vector<u8> ExpectedBytes(const DibCopy& source, const Region& r) {
    const DibView& view = source.View();
    const auto stride =
        static_cast<std::size_t>(RowStride(static_cast<u32>(r.targetWidth), view.bits));
    std::vector<u8> bytes(view.head + stride * static_cast<std::size_t>(r.targetHeight));
    DibHeader header = source.Header();
    header.biWidth = r.targetWidth;
    header.biHeight = r.targetHeight;
    header.biSizeImage = static_cast<u32>(bytes.size() - view.head);
    std::copy_n(source.Bytes().begin(), view.head, bytes.begin());
    std::memcpy(bytes.data(), &header, sizeof header);
    if (view.imageClass == ImageClass::Palette8) {
        return bytes;
    }
    for (i32 j = 0; j < r.targetHeight; ++j) {
        const Place row = PlaceOf(j, r.y, r.height, r.targetHeight, view.height);
        u8* to = bytes.data() + view.head + static_cast<std::size_t>(j) * stride;
        for (i32 i = 0; i < r.targetWidth; ++i) {
            const Place column = PlaceOf(i, r.x, r.width, r.targetWidth, view.width);
            if (!row.inside || !column.inside) {
                continue;
            }
            if (view.bits == 1) {
                to[i / 8] = static_cast<u8>(to[i / 8] +
                                            (source.At(column.index, row.index) << (7 - i % 8)));
                continue;
            }
            for (u32 channel = 0; channel < view.bits / 8; ++channel) {
                to[static_cast<u32>(i) * view.bits / 8 + channel] =
                    MixedByte(source, column, row, channel);
            }
        }
    }
    return bytes;
}

// ---- Tests
// ---------------------------------------------------------------------------------------

TEST_F(CropAndScale, FollowsThePlainRuleOnAnyRegion) {
    std::mt19937 random(20);
    const auto upTo = [&](u32 most) { return static_cast<i32>(1 + random() % most); };
    for (const ImageClass kind :
         {ImageClass::Colour, ImageClass::Grey, ImageClass::Mono, ImageClass::Palette8}) {
        for (u32 round = 0; round < 200; ++round) {
            const i32 width = upTo(40);
            const i32 height = upTo(20);
            const OwnedBlock source =
                MakeDib(kind, width, height, {.seed = round, .randomPadding = true});
            Region r = {upTo(45) - 1, upTo(25) - 1, upTo(60), upTo(30), upTo(60), upTo(40)};
            if (round % 4 == 0) {
                r.targetWidth = r.width;
            }
            SCOPED_TRACE(testing::Message()
                         << "class " << static_cast<i32>(kind) << ", " << width << " x " << height
                         << ", region " << r.x << ' ' << r.y << ' ' << r.width << ' ' << r.height
                         << " to " << r.targetWidth << " x " << r.targetHeight);
            const UnchangedGuard unchanged(source.Handle());
            const OwnedBlock result(Scale(source, r));
            ASSERT_TRUE(result);
            ASSERT_EQ(BytesOf(result.Handle()), ExpectedBytes(DibCopy(source.Handle()), r));
        }
    }
}

TEST_F(CropAndScale, MixesNeighboursAtEighths) {
    const OwnedBlock source = MakeGreyDib(3, {0, 255, 7});
    const OwnedBlock doubled(Scale(source, {0, 0, 3, 1, 6, 1}));
    EXPECT_EQ(DibCopy(doubled.Handle()).Row(0), (std::vector<u8>{0, 128, 255, 131, 7, 7}));
    const OwnedBlock corner(Scale(source, {1, 0, 2, 1, 1, 1}));
    EXPECT_EQ(DibCopy(corner.Handle()).Row(0), std::vector<u8>{255});
}

TEST_F(CropAndScale, LeavesZeroWhatLiesBeyondThePicture) {
    const OwnedBlock source = MakeGreyDib(2, {10, 20, 30, 40});
    const OwnedBlock before(Scale(source, {-2, -1, 4, 4, 4, 4}));
    const DibCopy copy(before.Handle());
    EXPECT_EQ(copy.Row(0), (std::vector<u8>{0, 0, 0, 0}));
    EXPECT_EQ(copy.Row(1), (std::vector<u8>{0, 0, 10, 20}));
    EXPECT_EQ(copy.Row(2), (std::vector<u8>{0, 0, 30, 40}));
    EXPECT_EQ(copy.Row(3), (std::vector<u8>{0, 0, 0, 0}));
    const OwnedBlock half(Scale(source, {-1, 0, 2, 1, 4, 1}));
    EXPECT_EQ(DibCopy(half.Handle()).Row(0), (std::vector<u8>{0, 10, 10, 15}));
    for (const Region& distant :
         {Region{INT_MAX, INT_MAX, INT_MAX, INT_MAX, 3, 3}, Region{INT_MIN, INT_MIN, 1, 1, 3, 3}}) {
        const OwnedBlock nothing(Scale(source, distant));
        EXPECT_EQ(DibCopy(nothing.Handle()).Row(2), (std::vector<u8>{0, 0, 0}));
    }
}

TEST_F(CropAndScale, RefusesWhatItCannotScale) {
    const OwnedBlock good = MakeDib(ImageClass::Colour, 4, 4);
    const OwnedBlock fourBits = MakeDib(ImageClass::Palette4, 4, 4);
    const OwnedBlock lying = MakeDib(ImageClass::Colour, 4, 4);
    EditHeader(lying.Handle(), [](DibHeader& header) { header.biHeight = 5; });
    const OwnedBlock none;
    const struct {
        const OwnedBlock& source;
        Region region;
    } cases[] = {{none, {0, 0, 4, 4, 4, 4}},       {fourBits, {0, 0, 4, 4, 4, 4}},
                 {lying, {0, 0, 4, 4, 4, 4}},      {good, {0, 0, 0, 4, 4, 4}},
                 {good, {0, 0, 4, -1, 4, 4}},      {good, {0, 0, 4, 4, 0, 4}},
                 {good, {0, 0, 4, 4, 4, INT_MIN}}, {good, {0, 0, 4, 4, INT_MAX, INT_MAX}}};
    EngineProbe probe;
    for (const auto& c : cases) {
        const LeakGuard guard;
        const UnchangedGuard unchanged(c.source.Handle());
        EXPECT_EQ(Scale(c.source, c.region), 0u);
    }
    EXPECT_TRUE(probe.Trace().empty()) << "a refusal asks and reports nothing";
}

TEST_F(CropAndScale, AsksAndReportsLikeAKernelWithoutACursor) {
    const OwnedBlock source = MakeDib(ImageClass::Colour, 9, 9);
    const OwnedBlock palette = MakeDib(ImageClass::Palette8, 9, 9);
    EngineProbe probe;
    // Rows beyond the picture count as any other.
    FreeBlock(Scale(source, {0, 3, 9, 9, 5, 37}));
    EXPECT_EQ(probe.Trace(), UsualRhythm(37));
    probe.Clear();
    FreeBlock(Scale(palette, {0, 0, 9, 9, 5, 37}));
    EXPECT_EQ(probe.Trace(), std::vector<i32>{100});
}

TEST_F(CropAndScale, LeavesNothingBehindWhenItStops) {
    const OwnedBlock source = MakeDib(ImageClass::Grey, 9, 9);
    const UnchangedGuard unchanged(source.Handle());
    const auto run = [&] { return Scale(source, {1, 1, 7, 7, 20, 20}); };
    ExpectStopsAtEveryQuestion(run);
    ExpectZeroWhenAnAllocationFails(run);
}

} // namespace

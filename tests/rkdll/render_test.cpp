#include "rkdll/rkdll.h"

#include "tests/drive/drive.h"
#include "tests/support/dib_maker.h"
#include "tests/support/document_maker.h"
#include "tests/support/leak_guard.h"

namespace {

constexpr RkBackground kGreySquares{};
constexpr ImageClass kKinds[] = {ImageClass::Colour, ImageClass::Grey, ImageClass::Palette8,
                                 ImageClass::Palette4, ImageClass::Mono};

class RenderTest : public LeakGuardTest {};
using RkImageCropToDibTest = RenderTest;
using RkDibDisplayTest = RenderTest;
using RkImageDeleteTest = RenderTest;

Bgr ColourOf(u32 color) {
    return {static_cast<u8>(color >> 16), static_cast<u8>(color >> 8), static_cast<u8>(color)};
}

Bgr BackgroundAt(const RkBackground& background, i32 x, i32 down) {
    const bool first = background.word0 == 1 || (x / 8 + down / 8) % 2 == 0;
    if (background.word0 == 1 || background.word0 == 2) {
        return ColourOf(first ? background.word1 : background.word2);
    }
    return ColourOf(first ? 0xFFFFFF : 0xCCCCCC);
}

Bgr PictureColour(const DibCopy& dib, i32 x, i32 y) {
    if (dib.View().bits == 24) {
        return dib.ColourAt(x, y);
    }
    const u32 index = dib.At(x, y);
    return index < dib.View().paletteEntries ? dib.PaletteAt(index) : Bgr{};
}

// The rule for one pixel, in the plainest words. `down` counts from the canvas's top.
Bgr RenderPixel(const ImageDocument& document, const RkBackground& background, i32 x, i32 down) {
    Bgr result = BackgroundAt(background, x, down);
    for (i32 i = 0; i < document.layerCount; ++i) {
        const LayerEntry& layer = document.layers[i];
        const DibCopy image(layer.image);
        const DibCopy mask(layer.mask);
        const i64 column = i64{x} - layer.left;
        const i64 row = image.View().height - 1 - (i64{down} - layer.top);
        if (column < 0 || column >= image.View().width || row < 0 || row >= image.View().height) {
            continue;
        }
        double coverage = 1;
        if (mask.Valid()) {
            const bool inside = column < mask.View().width && row < mask.View().height;
            coverage =
                inside ? mask.At(static_cast<i32>(column), static_cast<i32>(row)) / 255.0 : 0;
        }
        const Bgr over = PictureColour(image, static_cast<i32>(column), static_cast<i32>(row));
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const double mixed = over[channel] * coverage + result[channel] * (1 - coverage);
            result[channel] = static_cast<u8>(mixed + 0.5);
        }
    }
    return result;
}

void ExpectRendersLikeTheRule(DocHandle document, const RkBackground& background) {
    const OwnedBlock result(RkImageCropToDib(document, -1, 0, &background));
    const DibCopy picture(result.Handle());
    ASSERT_TRUE(picture.Valid());
    const BlockLock lock(document);
    const auto& record = *reinterpret_cast<const ImageDocument*>(lock.Bytes());
    ASSERT_EQ(picture.View().width, record.width);
    ASSERT_EQ(picture.View().height, record.height);
    ASSERT_EQ(picture.View().bits, 24u);
    for (i32 y = 0; y < record.height; ++y) {
        for (i32 x = 0; x < record.width; ++x) {
            const Bgr expected = RenderPixel(record, background, x, record.height - 1 - y);
            ASSERT_EQ(picture.ColourAt(x, y), expected) << "at " << x << ", " << y;
        }
    }
}

TEST_F(RkImageCropToDibTest, BlendsLayersOfEveryDepthByTheirMasks) {
    for (const ImageClass kind : kKinds) {
        SCOPED_TRACE(static_cast<int>(kind));
        TestDocument document(19, 11, kind, 2);
        // The second layer: a short palette, an offset, and no mask or one of another size.
        document.SetImage(1, MakeDib(kind, 13, 6, {.seed = 7, .paletteEntries = 2}));
        document.SetMask(1, OwnedBlock());
        document.Change([](ImageDocument& record) {
            record.layers[1].left = 4;
            record.layers[1].top = 3;
        });
        ExpectRendersLikeTheRule(document.Handle(), kGreySquares);
        document.SetMask(1, MakeDib(ImageClass::Grey, 9, 4, {.seed = 8}));
        ExpectRendersLikeTheRule(document.Handle(), kGreySquares);
        document.SetMask(1, MakeDib(ImageClass::Grey, 16, 9, {.seed = 9}));
        ExpectRendersLikeTheRule(document.Handle(), kGreySquares);
    }
}

TEST_F(RkImageCropToDibTest, ClipsLayersAtEveryEdge) {
    constexpr i32 kFar = 0x7FFFFFFF;
    for (const i32 left : {-kFar - 1, -17, -16, -5, 3, 20, 21, kFar}) {
        for (const i32 top : {-kFar - 1, -10, -9, -2, 4, 12, 13, kFar}) {
            SCOPED_TRACE(testing::Message() << left << ", " << top);
            TestDocument document(21, 13);
            document.SetImage(0, MakeDib(ImageClass::Colour, 17, 10));
            document.SetMask(0, MakeDib(ImageClass::Grey, 17, 10));
            document.Change([&](ImageDocument& record) {
                record.layers[0].left = left;
                record.layers[0].top = top;
            });
            ExpectRendersLikeTheRule(document.Handle(), kGreySquares);
        }
    }
}

TEST_F(RkImageCropToDibTest, PaintsTheBackgroundThatTheWordsChoose) {
    TestDocument document(30, 19);
    document.SetImage(0, OwnedBlock());
    for (const i32 word0 : {0, 1, 2, 3, -1}) {
        ExpectRendersLikeTheRule(document.Handle(), {word0, 0x112233, 0xFF445566});
    }
}

TEST_F(RkImageCropToDibTest, RendersOneLayerWhenAskedForIt) {
    TestDocument document(8, 8, ImageClass::Colour, 2);
    document.SetMask(0, OwnedBlock());
    document.SetMask(1, OwnedBlock());
    for (const i32 layer : {0, 1}) {
        const OwnedBlock result(RkImageCropToDib(document.Handle(), layer, 0, &kGreySquares));
        const DibCopy image(document.Layer(layer).image);
        EXPECT_EQ(DibCopy(result.Handle()).Row(5), image.Row(5));
    }
}

TEST_F(RkImageCropToDibTest, GivesNothingForWhatIsNoDocument) {
    EXPECT_EQ(RkImageCropToDib(0, -1, 0, &kGreySquares), 0u);
    const OwnedBlock tooShort(AllocateBlock(sizeof(ImageDocument) - 1));
    EXPECT_EQ(RkImageCropToDib(tooShort.Handle(), -1, 0, &kGreySquares), 0u);
    u32 stale = AllocateBlock(sizeof(ImageDocument));
    FreeBlock(stale);
    EXPECT_EQ(RkImageCropToDib(stale, -1, 0, &kGreySquares), 0u);

    TestDocument document(3, 3);
    for (const auto& size :
         {std::pair{0, 3}, {3, 0}, {-1, 3}, {3, -2147483647}, {2147483647, 2147483647}}) {
        document.Change([&](ImageDocument& record) {
            record.width = size.first;
            record.height = size.second;
        });
        EXPECT_EQ(RkImageCropToDib(document.Handle(), -1, 0, &kGreySquares), 0u);
    }
    document.Change([](ImageDocument& record) { record.width = record.height = 3; });
    ExpectZeroWhenAnAllocationFails(
        [&] { return RkImageCropToDib(document.Handle(), -1, 0, &kGreySquares); });
}

TEST_F(RkImageCropToDibTest, LeavesOutALayerWhosePictureLies) {
    TestDocument document(9, 9, ImageClass::Colour, 2);
    EditHeader(document.Layer(0).image, [](DibHeader& header) { header.biHeight = 10; });
    document.SetMask(1, OwnedBlock());
    const OwnedBlock result(RkImageCropToDib(document.Handle(), -1, 0, &kGreySquares));
    EXPECT_EQ(DibCopy(result.Handle()).Row(4), DibCopy(document.Layer(1).image).Row(4));
}

TEST_F(RkDibDisplayTest, ShowsPicturesOfEveryDepthPixelForPixel) {
    for (const ImageClass kind : kKinds) {
        SCOPED_TRACE(static_cast<int>(kind));
        const OwnedBlock dib = MakeDib(kind, 11, 7, {.paletteEntries = 2, .randomPadding = true});
        const UnchangedGuard unchanged(dib.Handle());
        const DibCopy picture(dib.Handle());
        DrawnPicture surface(Screen(20, 20, 0x00FF00));
        const RECT place{5, 6, 16, 13};
        EXPECT_EQ(RkDibDisplay(surface.Dc(), &place, dib.Handle(), 0, 0, 0), 1);
        const Screen shown = surface.Finish();
        for (int y = 0; y < 20; ++y) {
            for (int x = 0; x < 20; ++x) {
                const bool inside = x >= 5 && x < 16 && y >= 6 && y < 13;
                const Bgr color = inside ? PictureColour(picture, x - 5, 12 - y) : Bgr{0, 255, 0};
                const u32 expected = u32{color[2]} << 16 | u32{color[1]} << 8 | color[0];
                ASSERT_EQ(shown.At(x, y), expected) << x << ", " << y;
            }
        }
    }
}

TEST_F(RkDibDisplayTest, ShowsNothingOfWhatIsNoPicture) {
    const DrawnPicture surface(Screen(4, 4, 0));
    const HDC dc = surface.Dc();
    const RECT place{0, 0, 4, 4};
    const OwnedBlock dib = MakeDib(ImageClass::Colour, 4, 4);
    EXPECT_EQ(RkDibDisplay(dc, &place, 0, 0, 0, 0), 0);
    EXPECT_EQ(RkDibDisplay(dc, nullptr, dib.Handle(), 0, 0, 0), 0);
    EXPECT_EQ(RkDibDisplay(nullptr, &place, dib.Handle(), 0, 0, 0), 0);
    EditHeader(dib.Handle(), [](DibHeader& header) { header.biWidth = 5; });
    EXPECT_EQ(RkDibDisplay(dc, &place, dib.Handle(), 0, 0, 0), 0);
}

TEST_F(RkImageDeleteTest, FreesTheDocumentAndWhatItsUsedLayersHold) {
    const auto take = [](i32 layerCount, i32 filled) {
        const DocHandle document = AllocateBlock(sizeof(ImageDocument));
        const BlockLock lock(document);
        auto& record = *reinterpret_cast<ImageDocument*>(lock.Bytes());
        record.layerCount = layerCount;
        for (i32 i = 0; i < filled; ++i) {
            record.layers[i].image = AllocateBlock(40);
            record.layers[i].mask = i % 2 == 0 ? AllocateBlock(40) : 0;
        }
        return document;
    };
    const std::size_t before = LiveBlockCount();
    for (const auto& [count, filled] :
         {std::pair{0, 0}, {1, 1}, {101, 101}, {2147483647, 101}, {-1, 0}}) {
        RkImageDelete(take(count, filled));
        EXPECT_EQ(LiveBlockCount(), before) << count;
    }
    RkImageDelete(0);

    // A layer that is not in use belongs to somebody else.
    const DocHandle document = take(1, 2);
    OwnedBlock other;
    {
        const BlockLock lock(document);
        other = OwnedBlock(reinterpret_cast<const ImageDocument*>(lock.Bytes())->layers[1].image);
    }
    RkImageDelete(document);
    EXPECT_EQ(LiveBlockCount(), before + 1);
    const OwnedBlock tooShort(AllocateBlock(100));
    RkImageDelete(tooShort.Handle());
    EXPECT_EQ(BlockSize(tooShort.Handle()), 100u);
}

} // namespace

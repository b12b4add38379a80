#include "host/dib_image.h"
#include "pictures/layer_files.h"
#include "tests/pictures/scratch.h"

namespace {

class LayerFile : public PictureTest {
protected:
    static OwnedBlock WithPalette(OwnedBlock dib, const std::vector<Bgr>& colours) {
        const BlockLock lock(dib.Handle());
        u8* entry = lock.Bytes() + kDibHeaderBytes;
        for (const Bgr& colour : colours) {
            std::copy(colour.begin(), colour.end(), entry);
            entry += kPaletteEntryBytes;
        }
        return dib;
    }

    std::string Written(const char* name, const OwnedBlock& dib, DibHandle alpha = 0) const {
        EXPECT_EQ(WritePicture(Path(name).c_str(), dib.Handle(), alpha), PictureResult::Ok);
        return Path(name);
    }

    static std::size_t CountOf(DibHandle mask, u8 value) {
        const std::vector<Bgr> levels = Colours(mask);
        return static_cast<std::size_t>(
            std::count(levels.begin(), levels.end(), Bgr{value, value, value}));
    }
};

TEST_F(LayerFile, OpensAsGreyOrColourWithAWhiteMask) {
    const struct {
        const char* name;
        OwnedBlock dib;
        ImageClass expected;
    } cases[] = {
        {"colour.bmp", MakeDib(ImageClass::Colour, 7, 5), ImageClass::Colour},
        {"grey.png", MakeDib(ImageClass::Grey, 7, 5), ImageClass::Grey},
        {"palette.bmp", MakeDib(ImageClass::Palette8, 7, 5), ImageClass::Colour},
        {"four.bmp", MakeDib(ImageClass::Palette4, 7, 5), ImageClass::Colour},
        {"one.bmp",
         WithPalette(MakeDib(ImageClass::Mono, 7, 5), {Bgr{255, 255, 255}, Bgr{40, 40, 40}}),
         ImageClass::Grey},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        OwnedBlock image, mask;
        ASSERT_EQ(ReadLayer(Written(each.name, each.dib).c_str(), image, mask), PictureResult::Ok);
        EXPECT_EQ(DibCopy(image.Handle()).View().imageClass, each.expected);
        EXPECT_EQ(Colours(image.Handle()), Colours(each.dib.Handle()));
        EXPECT_EQ(CountOf(mask.Handle(), 255), 35u);
    }
}

TEST_F(LayerFile, TransparencyBecomesTheMask) {
    const OwnedBlock alpha = MakeDib(ImageClass::Grey, 7, 5);
    const std::string path = Written("a.png", MakeDib(ImageClass::Colour, 7, 5), alpha.Handle());
    OwnedBlock image, mask;
    ASSERT_EQ(ReadLayer(path.c_str(), image, mask), PictureResult::Ok);
    EXPECT_EQ(Colours(mask.Handle()), Colours(alpha.Handle()));
    ASSERT_EQ(ReadMask(path.c_str(), mask), PictureResult::Ok);
    EXPECT_EQ(Colours(mask.Handle()), Colours(alpha.Handle()));
}

TEST_F(LayerFile, APictureWithoutTransparencyMasksByItsBrightness) {
    const OwnedBlock dib = MakeColourDib(4, {{255, 255, 255}, {0, 0, 0}, {0, 255, 0}, {255, 0, 0}});
    OwnedBlock mask;
    ASSERT_EQ(ReadMask(Written("a.bmp", dib).c_str(), mask), PictureResult::Ok);
    EXPECT_EQ(DibCopy(mask.Handle()).Row(0), (std::vector<u8>{255, 0, 149, 28}));
}

TEST_F(LayerFile, AnUnreadableOneChangesNothing) {
    OwnedBlock image = MakeDib(ImageClass::Colour, 1, 1), mask = MakeDib(ImageClass::Grey, 1, 1);
    const DibHandle handles[] = {image.Handle(), mask.Handle()};
    const std::string path = Put("a.png", {1, 2, 3});
    EXPECT_EQ(ReadLayer(path.c_str(), image, mask), PictureResult::NotAPicture);
    EXPECT_EQ(ReadMask(path.c_str(), mask), PictureResult::NotAPicture);
    EXPECT_EQ(image.Handle(), handles[0]);
    EXPECT_EQ(mask.Handle(), handles[1]);
}

TEST(ImageOfDib, PutsTheLastRowOnTopAndHidesWhatTheMaskHides) {
    const OwnedBlock dib = MakeColourDib(2, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}});
    const OwnedBlock mask = MakeGreyDib(2, {255, 128, 0, 255});
    const QImage masked = ImageOfDib(dib.Handle(), mask.Handle());
    EXPECT_EQ(masked.pixel(0, 1), qRgba(3, 2, 1, 255));
    EXPECT_EQ(masked.pixel(1, 1), qRgba(6, 5, 4, 128));
    EXPECT_EQ(masked.pixel(0, 0), qRgba(9, 8, 7, 0));
    EXPECT_EQ(masked.pixel(1, 0), qRgba(12, 11, 10, 255));

    const OwnedBlock white = MakeGreyDib(2, {255, 255, 255, 255});
    const OwnedBlock other = MakeGreyDib(1, {0, 0, 0, 0});
    for (const DibHandle opaque : {white.Handle(), other.Handle(), DibHandle{0}}) {
        EXPECT_FALSE(ImageOfDib(dib.Handle(), opaque).hasAlphaChannel());
    }
    EXPECT_TRUE(ImageOfDib(0, white.Handle()).isNull());
}

} // namespace

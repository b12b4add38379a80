#include "tests/pictures/scratch.h"

#include <cstdio>

#include <jpeglib.h>

namespace {

class Jpeg : public PictureTest {};

// A picture without edges, which this format keeps well.
OwnedBlock SmoothDib(bool grey, i32 width, i32 height) {
    std::vector<u8> levels;
    std::vector<Bgr> pixels;
    for (i32 i = 0; i < width * height; ++i) {
        const i32 x = i % width * 200 / width, y = i / width * 200 / height;
        levels.push_back(static_cast<u8>(x));
        pixels.push_back({static_cast<u8>(x), static_cast<u8>(y), static_cast<u8>(255 - x)});
    }
    return grey ? MakeGreyDib(width, levels) : MakeColourDib(width, pixels);
}

void ExpectNear(const std::vector<Bgr>& found, const std::vector<Bgr>& expected, int tolerance) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            ASSERT_NEAR(found[i][channel], expected[i][channel], tolerance) << "pixel " << i;
        }
    }
}

TEST_F(Jpeg, GreyStaysGreyAndColourKeepsItsPlaces) {
    for (const bool grey : {true, false}) {
        for (const i32 width : {1, 64, 101}) {
            SCOPED_TRACE(testing::Message() << (grey ? "grey " : "colour ") << width);
            const OwnedBlock dib = SmoothDib(grey, width, 50);
            ASSERT_EQ(WritePicture(Path("a.JPEG").c_str(), dib.Handle()), PictureResult::Ok);
            const OwnedBlock back = Read(Path("a.JPEG"));
            EXPECT_EQ(DibCopy(back.Handle()).View().imageClass,
                      grey ? ImageClass::Grey : ImageClass::Colour);
            ExpectNear(Colours(back.Handle()), Colours(dib.Handle()), 12);
        }
    }
}

TEST_F(Jpeg, APaletteIsWrittenAsItsColours) {
    const OwnedBlock dib = MakeBlankDib(ImageClass::Palette8, 16, 16, 1);
    {
        const BlockLock lock(dib.Handle());
        lock.Bytes()[40] = 10;
        lock.Bytes()[41] = 200;
        lock.Bytes()[42] = 90;
    }
    ASSERT_EQ(WritePicture(Path("a.jpg").c_str(), dib.Handle()), PictureResult::Ok);
    ExpectNear(Colours(Read(Path("a.jpg")).Handle()), Colours(dib.Handle()), 4);
}

// One colour in four inks, plain or inverted with the marker that says so.
void WriteInks(const std::string& path, const u8 (&inks)[4], bool inverted) {
    jpeg_compress_struct codec = {};
    jpeg_error_mgr errors;
    codec.err = jpeg_std_error(&errors);
    jpeg_create_compress(&codec);
    std::FILE* stream = std::fopen(path.c_str(), "wb");
    jpeg_stdio_dest(&codec, stream);
    codec.image_width = 8;
    codec.image_height = 8;
    codec.input_components = 4;
    codec.in_color_space = JCS_CMYK;
    jpeg_set_defaults(&codec);
    jpeg_set_quality(&codec, 100, TRUE);
    codec.write_Adobe_marker = inverted ? TRUE : FALSE;
    jpeg_start_compress(&codec, TRUE);
    std::vector<u8> row;
    for (int x = 0; x < 8; ++x) {
        for (const u8 ink : inks) {
            row.push_back(inverted ? static_cast<u8>(255 - ink) : ink);
        }
    }
    for (int y = 0; y < 8; ++y) {
        JSAMPROW samples = row.data();
        jpeg_write_scanlines(&codec, &samples, 1);
    }
    jpeg_finish_compress(&codec);
    jpeg_destroy_compress(&codec);
    std::fclose(stream);
}

TEST_F(Jpeg, FourInksBecomeColours) {
    const u8 inks[4] = {255, 51, 0, 102}; // cyan, magenta, yellow, black
    const std::vector<Bgr> expected(64, Bgr{153, 122, 0});
    for (const bool inverted : {false, true}) {
        WriteInks(Path("a.jpg"), inks, inverted);
        ExpectNear(Colours(Read(Path("a.jpg")).Handle()), expected, 3);
    }
}

TEST_F(Jpeg, ASmallFileThatClaimsAHugePictureTakesNoMemory) {
    const OwnedBlock dib = SmoothDib(true, 16, 16);
    ASSERT_EQ(WritePicture(Path("a.jpg").c_str(), dib.Handle()), PictureResult::Ok);
    std::vector<u8> file = Bytes("a.jpg");
    std::size_t frame = 2;
    while (file[frame + 1] != 0xC0) { // from marker to marker to the frame's header
        frame += 2u + file[frame + 2] * 256u + file[frame + 3];
    }
    file[frame + 5] = file[frame + 7] = 0xF0; // the high bytes of height and width
    FailAllocation(0);
    EXPECT_EQ(TryRead(Put("b.jpg", file)), PictureResult::Truncated);
    EXPECT_EQ(AllocationCount(), 0u);
}

} // namespace

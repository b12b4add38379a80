#include "tests/pictures/scratch.h"

#include <csetjmp>
#include <png.h>
#include <zlib.h>

namespace {

class Png : public PictureTest {};

constexpr i32 kWidth = 11;
constexpr i32 kHeight = 9;

struct Kind {
    const char* name;
    int type;
    int bits;
    bool transparent; // a tRNS chunk: of indices, or one colour
    ImageClass expected;
    bool hasAlpha;
};

constexpr Kind kKindsOfPng[] = {
    {"grey 1", PNG_COLOR_TYPE_GRAY, 1, false, ImageClass::Grey, false},
    {"grey 2", PNG_COLOR_TYPE_GRAY, 2, false, ImageClass::Grey, false},
    {"grey 4 with a hole", PNG_COLOR_TYPE_GRAY, 4, true, ImageClass::Grey, true},
    {"grey 8", PNG_COLOR_TYPE_GRAY, 8, false, ImageClass::Grey, false},
    {"grey 16", PNG_COLOR_TYPE_GRAY, 16, false, ImageClass::Grey, false},
    {"grey and alpha", PNG_COLOR_TYPE_GRAY_ALPHA, 8, false, ImageClass::Grey, true},
    {"palette 1", PNG_COLOR_TYPE_PALETTE, 1, false, ImageClass::Palette8, false},
    {"palette 2 with alpha", PNG_COLOR_TYPE_PALETTE, 2, true, ImageClass::Palette8, true},
    {"palette 8", PNG_COLOR_TYPE_PALETTE, 8, false, ImageClass::Palette8, false},
    {"colour 8", PNG_COLOR_TYPE_RGB, 8, false, ImageClass::Colour, false},
    {"colour 8 with a hole", PNG_COLOR_TYPE_RGB, 8, true, ImageClass::Colour, true},
    {"colour 16", PNG_COLOR_TYPE_RGB, 16, false, ImageClass::Colour, false},
    {"colour and alpha", PNG_COLOR_TYPE_RGB_ALPHA, 8, false, ImageClass::Colour, true},
    {"colour and alpha 16", PNG_COLOR_TYPE_RGB_ALPHA, 16, false, ImageClass::Colour, true},
};

u32 ChannelsOf(int type) {
    return (type & PNG_COLOR_MASK_COLOR && type != PNG_COLOR_TYPE_PALETTE ? 3u : 1u) +
           (type & PNG_COLOR_MASK_ALPHA ? 1u : 0u);
}

// The 8-bit value that a channel has; at lower depths only its upper bits count.
u8 Sample(i32 x, i32 fromTop, u32 channel) {
    return static_cast<u8>(x * 37 + fromTop * 91 + static_cast<i32>(channel) * 60);
}

u32 Reduced(u8 value, int bits) {
    return bits >= 8 ? value : static_cast<u32>(value >> (8 - bits));
}

png_color ColourOfIndex(u32 index) {
    return {static_cast<u8>(index * 5 + 1), static_cast<u8>(index * 3),
            static_cast<u8>(255 - index)};
}

std::vector<u8> RowOf(const Kind& kind, i32 fromTop) {
    std::vector<u8> row(kWidth * 8u + 8);
    std::size_t bit = 0;
    for (i32 x = 0; x < kWidth; ++x) {
        for (u32 channel = 0; channel < ChannelsOf(kind.type); ++channel) {
            const u32 value = Reduced(Sample(x, fromTop, channel), kind.bits);
            if (kind.bits == 16) {
                row[bit / 8] = static_cast<u8>(value); // both bytes alike: exactly value / 255
                row[bit / 8 + 1] = static_cast<u8>(value);
            } else {
                const std::size_t shift = 8 - bit % 8 - static_cast<std::size_t>(kind.bits);
                row[bit / 8] = static_cast<u8>(row[bit / 8] | value << shift);
            }
            bit += static_cast<std::size_t>(kind.bits);
        }
    }
    return row;
}

struct PngFile {
    std::FILE* stream;
    png_structp png;
    png_infop info;
};

// Holds plain values only: libpng's errors jump out of it.
bool WriteKind(PngFile& file, const Kind& kind, int interlace, png_bytepp rows) {
    if (setjmp(png_jmpbuf(file.png)) != 0) {
        return false;
    }
    png_init_io(file.png, file.stream);
    png_set_IHDR(file.png, file.info, kWidth, kHeight, kind.bits, kind.type, interlace,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (kind.type == PNG_COLOR_TYPE_PALETTE) {
        png_color colours[256];
        for (u32 i = 0; i < 256; ++i) {
            colours[i] = ColourOfIndex(i);
        }
        png_set_PLTE(file.png, file.info, colours, 1 << kind.bits);
    }
    if (kind.transparent) {
        png_byte ofIndex[2] = {0, 100};
        png_color_16 hole = {};
        hole.gray = static_cast<png_uint_16>(Reduced(Sample(2, 3, 0), kind.bits));
        hole.red = Sample(2, 3, 0);
        hole.green = Sample(2, 3, 1);
        hole.blue = Sample(2, 3, 2);
        png_set_tRNS(file.png, file.info, ofIndex, 2, &hole);
    }
    png_write_info(file.png, file.info);
    png_write_image(file.png, rows);
    png_write_end(file.png, nullptr);
    return true;
}

bool WriteKindTo(const std::string& path, const Kind& kind, int interlace) {
    std::vector<std::vector<u8>> pixels;
    std::vector<png_bytep> rows;
    for (i32 y = 0; y < kHeight; ++y) {
        pixels.push_back(RowOf(kind, y));
    }
    for (auto& row : pixels) {
        rows.push_back(row.data());
    }
    PngFile file = {std::fopen(path.c_str(), "wb"),
                    png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr),
                    nullptr};
    file.info = png_create_info_struct(file.png);
    const bool written = WriteKind(file, kind, interlace, rows.data());
    png_destroy_write_struct(&file.png, &file.info);
    std::fclose(file.stream);
    return written;
}

Bgr ExpectedColour(const Kind& kind, i32 x, i32 fromTop) {
    if (kind.expected == ImageClass::Colour) {
        return {Sample(x, fromTop, 2), Sample(x, fromTop, 1), Sample(x, fromTop, 0)};
    }
    const u32 value = Reduced(Sample(x, fromTop, 0), kind.bits);
    if (kind.expected == ImageClass::Grey) {
        const u32 most = kind.bits >= 8 ? 255u : (1u << kind.bits) - 1;
        const u8 grey = static_cast<u8>(value * 255 / most);
        return {grey, grey, grey};
    }
    const png_color colour = ColourOfIndex(value);
    return {colour.blue, colour.green, colour.red};
}

u8 ExpectedAlpha(const Kind& kind, i32 x, i32 fromTop) {
    if (kind.type & PNG_COLOR_MASK_ALPHA) {
        return Sample(x, fromTop, ChannelsOf(kind.type) - 1);
    }
    const u32 value = Reduced(Sample(x, fromTop, 0), kind.bits);
    if (kind.type == PNG_COLOR_TYPE_PALETTE) {
        return value == 0 ? 0 : value == 1 ? 100 : 255;
    }
    return ExpectedColour(kind, x, fromTop) == ExpectedColour(kind, 2, 3) ? 0 : 255;
}

TEST_F(Png, EveryKindGivesItsColoursAndItsTransparency) {
    for (const Kind& kind : kKindsOfPng) {
        for (const int interlace : {PNG_INTERLACE_NONE, PNG_INTERLACE_ADAM7}) {
            SCOPED_TRACE(testing::Message() << kind.name << (interlace ? ", interlaced" : ""));
            ASSERT_TRUE(WriteKindTo(Path("a.png"), kind, interlace));
            OwnedBlock alpha;
            const OwnedBlock dib = Read(Path("a.png"), &alpha);
            ASSERT_EQ(DibCopy(dib.Handle()).View().imageClass, kind.expected);
            EXPECT_EQ(static_cast<bool>(alpha), kind.hasAlpha);
            const std::vector<Bgr> colours = Colours(dib.Handle());
            EXPECT_EQ(Colours(Read(Path("a.png")).Handle()), colours) << "without its alpha";
            const DibCopy mask(alpha.Handle());
            for (i32 i = 0; i < kWidth * kHeight; ++i) {
                const i32 x = i % kWidth, y = i / kWidth, fromTop = kHeight - 1 - y;
                ASSERT_EQ(colours[static_cast<u32>(i)], ExpectedColour(kind, x, fromTop)) << i;
                if (kind.hasAlpha) {
                    ASSERT_EQ(mask.At(x, y), ExpectedAlpha(kind, x, fromTop)) << i;
                }
            }
        }
    }
}

TEST_F(Png, EveryDepthComesBackWithItsColours) {
    for (const ImageClass kind : {ImageClass::Mono, ImageClass::Palette4, ImageClass::Palette8,
                                  ImageClass::Grey, ImageClass::Colour}) {
        for (const i32 width : {1, 8, 33}) {
            const OwnedBlock dib = MakeDib(kind, width, 4);
            const OwnedBlock mask = MakeDib(ImageClass::Grey, width, 4);
            OwnedBlock alpha;
            ASSERT_EQ(WritePicture(Path("a.png").c_str(), dib.Handle()), PictureResult::Ok);
            EXPECT_EQ(Colours(Read(Path("a.png"), &alpha).Handle()), Colours(dib.Handle()));
            EXPECT_FALSE(alpha);
            ASSERT_EQ(WritePicture(Path("b.png").c_str(), dib.Handle(), mask.Handle()),
                      PictureResult::Ok);
            EXPECT_EQ(Colours(Read(Path("b.png"), &alpha).Handle()), Colours(dib.Handle()));
            EXPECT_EQ(Colours(alpha.Handle()), Colours(mask.Handle()));
        }
    }
}

TEST_F(Png, ASmallFileThatClaimsAHugePictureTakesNoMemory) {
    ASSERT_TRUE(WriteKindTo(Path("a.png"), kKindsOfPng[9], PNG_INTERLACE_NONE));
    std::vector<u8> file = Bytes("a.png");
    for (const std::size_t field : {16u, 20u}) { // width and height, from the high byte on
        file[field + 1] = 0x7F;
    }
    const u32 sum = static_cast<u32>(crc32(0, file.data() + 12, 17));
    for (std::size_t i = 0; i < 4; ++i) {
        file[29 + i] = static_cast<u8>(sum >> (24 - 8 * i));
    }
    FailAllocation(0);
    EXPECT_EQ(TryRead(Put("b.png", file)), PictureResult::Truncated);
    EXPECT_EQ(AllocationCount(), 0u);
}

TEST_F(Png, IndicesBeyondThePaletteAreBlackInTheFileToo) {
    ExpectBlackBeyondThePalette("a.png");
}

} // namespace

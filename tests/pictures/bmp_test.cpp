#include "tests/pictures/scratch.h"

#include <cstring>
#include <functional>

namespace {

class Bmp : public PictureTest {};

constexpr ImageClass kKinds[] = {ImageClass::Mono, ImageClass::Palette4, ImageClass::Palette8,
                                 ImageClass::Grey, ImageClass::Colour};

void Put16(std::vector<u8>& bytes, u32 value) {
    bytes.push_back(static_cast<u8>(value));
    bytes.push_back(static_cast<u8>(value >> 8));
}

void Put32(std::vector<u8>& bytes, u32 value) {
    Put16(bytes, value);
    Put16(bytes, value >> 16);
}

// A file written by hand: a header of any version, a gap before the pixels, rows from the top down.
struct HandMade {
    u32 headerBytes = 40;
    u32 gap = 0;
    bool topDown = false;
    bool countLeftOut = false; // biClrUsed 0 for the full palette
    u8 padding = 0;
};

std::vector<u8> FileOf(DibHandle dib, const HandMade& way) {
    const DibCopy copy(dib);
    const DibView& view = copy.View();
    const bool core = way.headerBytes == 12;
    std::vector<u8> palette;
    for (u32 i = 0; i < view.paletteEntries; ++i) {
        palette.insert(palette.end(), view.Palette() + i * 4,
                       view.Palette() + i * 4 + (core ? 3 : 4));
    }
    std::vector<u8> file = {'B', 'M'};
    Put32(file, 0); // the file's size, which nobody needs
    Put32(file, 0);
    Put32(file, 14 + way.headerBytes + static_cast<u32>(palette.size()) + way.gap);
    Put32(file, way.headerBytes);
    if (core) {
        Put16(file, static_cast<u32>(view.width));
        Put16(file, static_cast<u32>(view.height));
    } else {
        Put32(file, static_cast<u32>(view.width));
        Put32(file, static_cast<u32>(way.topDown ? -view.height : view.height));
    }
    Put16(file, 1);
    Put16(file, view.bits);
    if (!core) {
        Put32(file, 0);
        Put32(file, 0);
        Put32(file, 2835);
        Put32(file, 2836);
        Put32(file, way.countLeftOut ? 0 : view.paletteEntries);
        Put32(file, 0);
    }
    file.resize(14 + way.headerBytes, 0x77); // the later versions' fields
    file.insert(file.end(), palette.begin(), palette.end());
    file.insert(file.end(), way.gap, u8{0xEE});
    for (i32 i = 0; i < view.height; ++i) {
        const u8* row = view.Row(way.topDown ? view.height - 1 - i : i);
        file.insert(file.end(), row, row + view.rowBytes);
        file.insert(file.end(), view.stride - view.rowBytes, way.padding);
    }
    return file;
}

// Header fields that a file does not carry over, set to what a reader makes of them.
std::vector<u8> Tidy(DibHandle dib, i32 xDensity, i32 yDensity) {
    EditHeader(dib, [&](DibHeader& header) {
        header.biPlanes = 1;
        header.biCompression = 0;
        header.biSizeImage =
            static_cast<u32>(RowStride(static_cast<u32>(header.biWidth), header.biBitCount) *
                             static_cast<u32>(header.biHeight));
        header.biXPelsPerMeter = xDensity;
        header.biYPelsPerMeter = yDensity;
        header.biClrImportant = 0;
    });
    return BytesOf(dib);
}

TEST_F(Bmp, EveryDepthComesBackByteForByte) {
    for (const ImageClass kind : kKinds) {
        for (const i32 width : {1, 2, 7, 8, 9, 31, 33, 64}) {
            SCOPED_TRACE(testing::Message() << "class " << static_cast<i32>(kind) << ", " << width);
            const OwnedBlock dib = MakeDib(kind, width, 3);
            const std::vector<u8> expected = Tidy(dib.Handle(), 11, -5);
            ASSERT_EQ(WritePicture(Path("a.bmp").c_str(), dib.Handle()), PictureResult::Ok);
            EXPECT_TRUE(BytesOf(Read(Path("a.bmp")).Handle()) == expected);
        }
    }
}

TEST_F(Bmp, APaletteKeepsItsRealCount) {
    const OwnedBlock dib = MakeBlankDib(ImageClass::Palette8, 5, 2, 16);
    ASSERT_EQ(WritePicture(Path("a.bmp").c_str(), dib.Handle()), PictureResult::Ok);
    EXPECT_EQ(DibCopy(Read(Path("a.bmp")).Handle()).Header().biClrUsed, 16u);
}

TEST_F(Bmp, IndicesBeyondThePaletteAreBlackInTheFileToo) {
    ExpectBlackBeyondThePalette("a.bmp");
}

TEST_F(Bmp, AcceptsEveryHeaderGapAndDirection) {
    const HandMade ways[] = {
        {.countLeftOut = true},
        {.gap = 7, .padding = 0xCC},
        {.topDown = true, .padding = 0xCC},
        {.headerBytes = 12},
        {.headerBytes = 52},
        {.headerBytes = 56, .countLeftOut = true},
        {.headerBytes = 108, .gap = 4},
        {.headerBytes = 124, .gap = 1000, .topDown = true, .countLeftOut = true},
    };
    for (const ImageClass kind : kKinds) {
        for (const HandMade& way : ways) {
            SCOPED_TRACE(testing::Message() << "class " << static_cast<i32>(kind) << ", header "
                                            << way.headerBytes << ", gap " << way.gap);
            const OwnedBlock dib = MakeDib(kind, 13, 5);
            const bool core = way.headerBytes == 12;
            std::vector<u8> file = FileOf(dib.Handle(), way);
            std::vector<u8> expected = Tidy(dib.Handle(), core ? 0 : 2835, core ? 0 : 2836);
            for (std::size_t i = 43; core && i < DibCopy(dib.Handle()).View().head; i += 4) {
                expected[i] = 0; // this header's palette has no reserved bytes
            }
            EXPECT_TRUE(BytesOf(Read(Put("a.bmp", file)).Handle()) == expected);
        }
    }
}

TEST_F(Bmp, SaysPlainlyWhatItRefuses) {
    const OwnedBlock dib = MakeDib(ImageClass::Palette4, 6, 6);
    const std::vector<u8> good = FileOf(dib.Handle(), {});
    const struct {
        const char* what;
        u32 offset, value;
        u32 bytes;
        PictureResult expected;
    } changes[] = {
        {"run lengths", 30, 2, 4, PictureResult::CompressedBmp},
        {"a PNG inside", 30, 5, 4, PictureResult::CompressedBmp},
        {"16 bits", 28, 16, 2, PictureResult::UnsupportedBmpDepth},
        {"32 bits", 28, 32, 2, PictureResult::UnsupportedBmpDepth},
        {"5 bits", 28, 5, 2, PictureResult::Damaged},
        {"an unknown header", 14, 64, 4, PictureResult::UnsupportedKind},
        {"a huge header", 14, 0xFFFFFFFF, 4, PictureResult::UnsupportedKind},
        {"no width", 18, 0, 4, PictureResult::Damaged},
        {"a negative width", 18, 0xFFFFFFFF, 4, PictureResult::Damaged},
        {"no height", 22, 0, 4, PictureResult::Damaged},
        {"the smallest height", 22, 0x80000000, 4, PictureResult::Damaged},
        {"pixels inside the palette", 10, 60, 4, PictureResult::Damaged},
        {"pixels behind the end", 10, 0xFFFFFFFF, 4, PictureResult::Truncated},
        {"a larger width", 18, 0x7FFFFFFF, 4, PictureResult::Truncated},
        {"a larger height", 22, 0x7FFFFFFF, 4, PictureResult::Truncated},
        {"the largest size of all", 28, 24, 2, PictureResult::Truncated},
    };
    for (const auto& change : changes) {
        std::vector<u8> file = good;
        std::memcpy(file.data() + change.offset, &change.value, change.bytes);
        FailAllocation(0);
        EXPECT_EQ(TryRead(Put("a.bmp", file)), change.expected) << change.what;
        EXPECT_EQ(AllocationCount(), 0u) << change.what << " took memory";
    }
}

TEST_F(Bmp, RefusesAFileThatIsWholeButLargerThanMemory) {
    std::vector<u8> head = FileOf(MakeBlankDib(ImageClass::Colour, 1, 1).Handle(), {});
    const u32 side = 1u << 20;
    std::memcpy(head.data() + 18, &side, 4);
    std::memcpy(head.data() + 22, &side, 4);
    const std::string path = Put("a.bmp", head);
    std::error_code failure;
    std::filesystem::resize_file(path, (u64{3} << 40) + 100, failure); // takes no room on the disk
    if (failure) {
        GTEST_SKIP() << "no sparse file of this size can be made here";
    }
    EXPECT_EQ(TryRead(path), PictureResult::TooLarge);
}

} // namespace

#include "image/dib.h"

#include "tests/support/dib_maker.h"
#include "tests/support/leak_guard.h"

#include <climits>
#include <cstring>

namespace {

using Dib = LeakGuardTest;

constexpr ImageClass kClasses[] = {ImageClass::Grey, ImageClass::Colour, ImageClass::Palette8,
                                   ImageClass::Palette4, ImageClass::Mono};

TEST_F(Dib, RowsArePaddedToFourBytes) {
    const struct {
        u32 bits, width;
        u64 stride;
    } cases[] = {{8, 1, 4},  {8, 2, 4},   {8, 3, 4},   {8, 4, 4},  {24, 1, 4},
                 {24, 2, 8}, {24, 3, 12}, {24, 4, 12}, {4, 1, 4},  {4, 8, 4},
                 {4, 9, 8},  {1, 1, 4},   {1, 32, 4},  {1, 33, 8}, {24, INT_MAX, 6442450944}};
    for (const auto& c : cases) {
        EXPECT_EQ(RowStride(c.width, c.bits), c.stride) << c.bits << " bits, width " << c.width;
    }
}

TEST_F(Dib, IsClassifiedByItsDepthAndPalette) {
    for (const ImageClass kind : kClasses) {
        const OwnedBlock dib = MakeDib(kind, 5, 3);
        EXPECT_EQ(ClassifyDib(dib.Handle()), static_cast<i32>(kind));
        EXPECT_EQ(IsGreyPaletteDib(dib.Handle()), kind == ImageClass::Grey);
    }
    for (const u16 bits : std::vector<u16>{0, 2, 16, 32}) {
        const OwnedBlock dib = MakeDib(ImageClass::Colour, 5, 3);
        EditHeader(dib.Handle(), [&](DibHeader& header) { header.biBitCount = bits; });
        EXPECT_EQ(ClassifyDib(dib.Handle()), 0);
    }
}

TEST_F(Dib, IsGreyOnlyWithTheWholeGreyRamp) {
    for (const std::size_t entry : {0u, 128u, 255u}) {
        for (const std::size_t byte : {0u, 1u, 2u}) {
            const OwnedBlock dib = MakeDib(ImageClass::Grey, 2, 2);
            const BlockLock lock(dib.Handle());
            lock.Bytes()[kDibHeaderBytes + entry * kPaletteEntryBytes + byte] ^= 1;
            EXPECT_EQ(ClassifyDib(dib.Handle()), 3) << "entry " << entry << ", byte " << byte;
        }
    }
    for (const u32 entries : {0u, 255u, 257u}) {
        const OwnedBlock dib = MakeDib(ImageClass::Grey, 2, 2);
        EditHeader(dib.Handle(), [&](DibHeader& header) { header.biClrUsed = entries; });
        EXPECT_EQ(IsGreyPaletteDib(dib.Handle()), 0) << entries << " entries";
    }
    std::vector<u8> cut = BytesOf(MakeDib(ImageClass::Grey, 2, 2).Handle());
    cut.resize(1063);
    EXPECT_EQ(ClassifyDib(MakeBlock(cut).Handle()), 3) << "a palette that ends too early";
}

TEST_F(Dib, TellsItsSize) {
    const OwnedBlock dib = MakeDib(ImageClass::Palette4, 7, 3);
    i32 width = -1;
    i32 height = -1;
    EXPECT_EQ(GetDibSize(dib.Handle(), nullptr, nullptr), 1);
    EXPECT_EQ(GetDibSize(dib.Handle(), &width, nullptr), 1);
    EXPECT_EQ(GetDibSize(dib.Handle(), nullptr, &height), 1);
    EXPECT_EQ(width, 7);
    EXPECT_EQ(height, 3);
}

TEST_F(Dib, BlocksThatAreNoPictureGiveNothing) {
    const u32 stale = MakeDib(ImageClass::Grey, 2, 2).Handle();
    const OwnedBlock empty(AllocateBlock(0));
    const OwnedBlock cut = MakeBlock(std::vector<u8>(39, 24));
    for (const u32 handle : {0u, stale, 0xFFFFFFFFu, empty.Handle(), cut.Handle()}) {
        const UnchangedGuard unchanged(handle);
        i32 width = -1;
        EXPECT_EQ(GetDibSize(handle, &width, nullptr), 0);
        EXPECT_EQ(width, -1);
        EXPECT_EQ(ClassifyDib(handle), 0);
        EXPECT_EQ(IsGreyPaletteDib(handle), 0);
    }
}

TEST_F(Dib, AViewCoversExactlyTheBlock) {
    for (const ImageClass kind : kClasses) {
        std::vector<u8> bytes = BytesOf(MakeDib(kind, 13, 3, {.paletteEntries = 2}).Handle());
        DibView view;
        ASSERT_TRUE(ViewDib(bytes.data(), bytes.size(), view));
        EXPECT_EQ(view.imageClass, kind);
        EXPECT_EQ(view.size, bytes.size());
        EXPECT_EQ(view.Row(view.height), bytes.data() + bytes.size());
        EXPECT_EQ(view.rowBytes, (13 * view.bits + 7) / 8);
        EXPECT_FALSE(ViewDib(bytes.data(), bytes.size() - 1, view)) << "a byte is missing";
    }
}

TEST_F(Dib, AHeaderThatLiesHasNoView) {
    const struct {
        const char* lie;
        void (*tell)(DibHeader&);
    } cases[] = {
        {"width 0", [](DibHeader& h) { h.biWidth = 0; }},
        {"width below 0", [](DibHeader& h) { h.biWidth = INT_MIN; }},
        {"width beyond the block", [](DibHeader& h) { h.biWidth = INT_MAX; }},
        {"height 0", [](DibHeader& h) { h.biHeight = 0; }},
        {"height below 0", [](DibHeader& h) { h.biHeight = -3; }},
        {"height beyond the block", [](DibHeader& h) { h.biHeight = INT_MAX; }},
        {"both beyond", [](DibHeader& h) { h.biWidth = h.biHeight = INT_MAX; }},
        {"one row too many", [](DibHeader& h) { ++h.biHeight; }},
        {"one palette entry too many", [](DibHeader& h) { ++h.biClrUsed; }},
        {"a palette of 16 GB", [](DibHeader& h) { h.biClrUsed = UINT_MAX; }},
        {"another header", [](DibHeader& h) { h.biSize = 124; }},
        {"16 bits", [](DibHeader& h) { h.biBitCount = 16; }},
    };
    for (const ImageClass kind : kClasses) {
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << "class " << static_cast<i32>(kind) << ", " << c.lie);
            const OwnedBlock dib = MakeDib(kind, 20, 3);
            const bool told24 = kind == ImageClass::Colour;
            EditHeader(dib.Handle(), c.tell);
            const DibCopy copy(dib.Handle());
            const bool aboutPalette = std::strstr(c.lie, "palette") != nullptr;
            EXPECT_EQ(copy.Valid(), told24 && aboutPalette) << "24 bits have no palette";
        }
    }
}

} // namespace

// PNG files by libpng. Its errors jump: every function that calls setjmp holds plain values only,
// and what owns memory lives in its caller.
#include "pictures/formats.h"
#include "pictures/whole_file.h"

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <png.h>

namespace {

// No deflate stream unpacks to more than this many times its length.
constexpr u64 kLargestInflation = 1032;

// One reading or writing: what libpng's callbacks and the functions that it may jump out of share.
struct PngWork {
    std::FILE* stream = nullptr;
    PictureResult result = PictureResult::Ok;
    png_structp png = nullptr;
    png_infop info = nullptr;
    png_bytepp rows = nullptr; // top row first
    u32 width = 0;
    u32 height = 0;
    int fileBits = 0; // per channel
    int fileChannels = 0;
    bool palette = false;
    bool grey = false;
    bool wantAlpha = false;
    u32 channels = 0; // after libpng's conversions
    std::size_t rowBytes = 0;

    bool HasAlphaChannel() const { return channels == 2 || channels == 4; }
};

void OnError(png_structp png, png_const_charp) {
    auto* work = static_cast<PngWork*>(png_get_error_ptr(png));
    if (work->result == PictureResult::Ok) {
        work->result = PictureResult::Damaged;
    }
    png_longjmp(png, 1);
}

void OnWarning(png_structp, png_const_charp) {}

// ---- Reading ------------------------------------------------------------------------------------

void OnRead(png_structp png, png_bytep bytes, png_size_t count) {
    auto* work = static_cast<PngWork*>(png_get_io_ptr(png));
    if (std::fread(bytes, 1, count, work->stream) != count) {
        work->result = ReadFailure(work->stream);
        png_error(png, "read");
    }
}

struct PngReader : PngWork {
    PngReader() {
        png = png_create_read_struct(PNG_LIBPNG_VER_STRING, static_cast<PngWork*>(this), OnError,
                                     OnWarning);
        info = png != nullptr ? png_create_info_struct(png) : nullptr;
    }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() { png_destroy_read_struct(&png, &info, nullptr); }
};

bool ReadInfo(PngWork& work) {
    if (setjmp(png_jmpbuf(work.png)) != 0) {
        return false;
    }
    png_set_read_fn(work.png, &work, OnRead);
    png_set_user_limits(work.png, INT32_MAX, INT32_MAX);
    png_read_info(work.png, work.info);
    work.width = png_get_image_width(work.png, work.info);
    work.height = png_get_image_height(work.png, work.info);
    work.fileBits = png_get_bit_depth(work.png, work.info);
    work.fileChannels = png_get_channels(work.png, work.info);
    const int type = png_get_color_type(work.png, work.info);
    work.palette = type == PNG_COLOR_TYPE_PALETTE;
    work.grey = (type & PNG_COLOR_MASK_COLOR) == 0;
    return true;
}

// Asks libpng for 8 bits a channel: index, grey or blue-green-red, with alpha only where wanted.
bool ChooseConversions(PngWork& work) {
    if (setjmp(png_jmpbuf(work.png)) != 0) {
        return false;
    }
    if (work.palette) {
        png_set_packing(work.png);
    } else if (work.grey && work.fileBits < 8) {
        png_set_expand_gray_1_2_4_to_8(work.png);
    } else if (work.fileBits == 16) {
        png_set_scale_16(work.png);
    }
    if (!work.wantAlpha) {
        png_set_strip_alpha(work.png);
    } else if (!work.palette && png_get_valid(work.png, work.info, PNG_INFO_tRNS) != 0) {
        png_set_tRNS_to_alpha(work.png);
    }
    png_set_bgr(work.png);
    png_set_interlace_handling(work.png);
    png_read_update_info(work.png, work.info);
    work.channels = png_get_channels(work.png, work.info);
    work.rowBytes = png_get_rowbytes(work.png, work.info);
    return true;
}

bool ReadRows(PngWork& work) {
    if (setjmp(png_jmpbuf(work.png)) != 0) {
        return false;
    }
    png_read_image(work.png, work.rows);
    png_read_end(work.png, nullptr);
    return true;
}

PictureResult NewDibForPng(const PngWork& work, OwnedBlock& dib) {
    if (work.grey) {
        return NewGreyDib(work.width, work.height, dib);
    }
    if (!work.palette) {
        return NewDib(work.width, work.height, 24, 0, dib);
    }
    png_colorp colours = nullptr;
    int count = 0;
    if (png_get_PLTE(work.png, work.info, &colours, &count) == 0) {
        return PictureResult::Damaged;
    }
    const PictureResult result = NewDib(work.width, work.height, 8, static_cast<u32>(count), dib);
    if (result == PictureResult::Ok) {
        const BlockLock lock(dib.Handle());
        for (int i = 0; i < count; ++i) {
            u8* entry = lock.Bytes() + kDibHeaderBytes + static_cast<u32>(i) * kPaletteEntryBytes;
            entry[0] = colours[i].blue;
            entry[1] = colours[i].green;
            entry[2] = colours[i].red;
        }
    }
    return result;
}

// The rows of a locked DIB, top row first, for both directions.
struct TopDownRows {
    u8* pixels = nullptr; // the bottom row
    std::size_t stride = 0;
    u32 height = 0;

    u8* Row(u32 fromTop) const { return pixels + (height - 1 - fromTop) * stride; }
};

bool RowsOf(const BlockLock& lock, u32 handle, TopDownRows& rows) {
    DibView view;
    if (!lock || !ViewDib(lock.Bytes(), BlockSize(handle), view)) {
        return false;
    }
    rows = {lock.Bytes() + view.head, view.stride, static_cast<u32>(view.height)};
    return true;
}

void SplitAlpha(const PngWork& work, const TopDownRows& colour, const TopDownRows& mask) {
    const u32 colours = work.channels - 1;
    for (u32 y = 0; y < work.height; ++y) {
        const u8* from = work.rows[y];
        u8* to = colour.Row(y);
        u8* alpha = mask.Row(y);
        for (u32 x = 0; x < work.width; ++x, from += work.channels, to += colours) {
            std::memcpy(to, from, colours);
            alpha[x] = from[colours];
        }
    }
}

// Reads colour and alpha together, then puts each in its own DIB.
PictureResult ReadWithAlpha(PngWork& work, const TopDownRows& colour, OwnedBlock& alpha) {
    PictureResult result = NewGreyDib(work.width, work.height, alpha);
    const u64 bytes = u64{work.rowBytes} * work.height;
    if (result != PictureResult::Ok || !FitsMemory(bytes)) {
        return result != PictureResult::Ok ? result : PictureResult::TooLarge;
    }
    const BlockTable<u8> pixels(bytes);
    const BlockLock lock(alpha.Handle());
    TopDownRows mask;
    if (!pixels || !RowsOf(lock, alpha.Handle(), mask)) {
        return PictureResult::TooLarge;
    }
    for (u32 y = 0; y < work.height; ++y) {
        work.rows[y] = pixels.Entries() + y * work.rowBytes;
    }
    if (!ReadRows(work)) {
        return work.result;
    }
    SplitAlpha(work, colour, mask);
    return PictureResult::Ok;
}

// The alpha of a palette picture stands beside its palette.
PictureResult AlphaOfIndices(const PngWork& work, const TopDownRows& indices, OwnedBlock& alpha) {
    png_bytep found = nullptr;
    int count = 0;
    if (png_get_tRNS(work.png, work.info, &found, &count, nullptr) == 0) {
        return PictureResult::Ok;
    }
    u8 alphaOfIndex[256];
    std::fill(std::begin(alphaOfIndex), std::end(alphaOfIndex), u8{255});
    std::copy_n(found, std::min(count, 256), alphaOfIndex);
    const PictureResult result = NewGreyDib(work.width, work.height, alpha);
    if (result != PictureResult::Ok) {
        return result;
    }
    const BlockLock lock(alpha.Handle());
    TopDownRows mask;
    if (!RowsOf(lock, alpha.Handle(), mask)) {
        return PictureResult::TooLarge;
    }
    for (u32 y = 0; y < work.height; ++y) {
        std::transform(indices.Row(y), indices.Row(y) + work.width, mask.Row(y),
                       [&](u8 index) { return alphaOfIndex[index]; });
    }
    return PictureResult::Ok;
}

PictureResult ReadPixels(PngWork& work, const OwnedBlock& dib, OwnedBlock* alpha) {
    const BlockLock lock(dib.Handle());
    const BlockTable<png_bytep> rows(work.height);
    TopDownRows target;
    if (!rows || !RowsOf(lock, dib.Handle(), target)) {
        return PictureResult::TooLarge;
    }
    work.rows = rows.Entries();
    if (alpha != nullptr && work.HasAlphaChannel()) {
        return ReadWithAlpha(work, target, *alpha);
    }
    for (u32 y = 0; y < work.height; ++y) {
        work.rows[y] = target.Row(y);
    }
    if (!ReadRows(work)) {
        return work.result;
    }
    return alpha != nullptr && work.palette ? AlphaOfIndices(work, target, *alpha)
                                            : PictureResult::Ok;
}

// ---- Writing ------------------------------------------------------------------------------------

void OnWrite(png_structp png, png_bytep bytes, png_size_t count) {
    auto* work = static_cast<PngWork*>(png_get_io_ptr(png));
    if (std::fwrite(bytes, 1, count, work->stream) != count) {
        work->result = FileFailure(PictureResult::CannotWrite);
        png_error(png, "write");
    }
}

void OnFlush(png_structp) {}

struct PngWriter : PngWork {
    PngWriter() {
        png = png_create_write_struct(PNG_LIBPNG_VER_STRING, static_cast<PngWork*>(this), OnError,
                                      OnWarning);
        info = png != nullptr ? png_create_info_struct(png) : nullptr;
    }
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;
    ~PngWriter() { png_destroy_write_struct(&png, &info); }
};

struct PngLayout {
    int bits;
    int type;
    png_color colours[256];
    int colourCount;
};

PngLayout LayoutFor(const DibView& view, bool alpha) {
    PngLayout layout = {8, PNG_COLOR_TYPE_RGB, {}, 0};
    if (alpha) {
        layout.type = PNG_COLOR_TYPE_RGB_ALPHA;
    } else if (view.imageClass == ImageClass::Grey) {
        layout.type = PNG_COLOR_TYPE_GRAY;
    } else if (view.bits != 24) {
        layout.type = PNG_COLOR_TYPE_PALETTE;
        layout.bits = static_cast<int>(view.bits);
        const FilePalette palette = PaletteForFile(view);
        layout.colourCount = static_cast<int>(palette.count);
        for (u32 i = 0; i < palette.count; ++i) {
            const u8* entry = palette.entries.data() + i * kPaletteEntryBytes;
            layout.colours[i] = {entry[2], entry[1], entry[0]};
        }
    }
    return layout;
}

// `row` is room for four bytes a pixel, used only where there is an alpha channel.
bool WriteAll(PngWork& work, const PngLayout& layout, const DibView& view, const DibView* alpha,
              u8* row) {
    if (setjmp(png_jmpbuf(work.png)) != 0) {
        return false;
    }
    png_set_write_fn(work.png, &work, OnWrite, OnFlush);
    png_set_user_limits(work.png, INT32_MAX, INT32_MAX);
    png_set_IHDR(work.png, work.info, static_cast<u32>(view.width), static_cast<u32>(view.height),
                 layout.bits, layout.type, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (layout.colourCount != 0) {
        png_set_PLTE(work.png, work.info, layout.colours, layout.colourCount);
    }
    png_write_info(work.png, work.info);
    png_set_bgr(work.png);
    for (i32 y = view.height - 1; y >= 0; --y) {
        if (alpha == nullptr) {
            png_write_row(work.png, view.Row(y));
            continue;
        }
        ReadRowAsBgr(view, y, row);
        // From the last pixel on, so that three bytes a pixel can become four in place.
        for (auto x = static_cast<std::size_t>(view.width); x-- > 0;) {
            std::memmove(row + x * 4, row + x * 3, 3);
            row[x * 4 + 3] = alpha->Row(y)[x];
        }
        png_write_row(work.png, row);
    }
    png_write_end(work.png, nullptr);
    return true;
}

} // namespace

PictureResult ReadPng(const PictureFile& file, OwnedBlock& dib, OwnedBlock* alpha) {
    PngReader work;
    if (work.info == nullptr) {
        return PictureResult::TooLarge;
    }
    work.stream = file.stream;
    work.wantAlpha = alpha != nullptr;
    if (!ReadInfo(work)) {
        return work.result;
    }
    const u64 pixelBits = static_cast<u64>(work.fileBits) * static_cast<u64>(work.fileChannels);
    if ((u64{work.width} * pixelBits + 7) / 8 > file.bytes * kLargestInflation / work.height) {
        return PictureResult::Truncated;
    }
    if (!ChooseConversions(work)) {
        return work.result;
    }
    OwnedBlock block;
    OwnedBlock mask;
    PictureResult result = NewDibForPng(work, block);
    if (result == PictureResult::Ok) {
        result = ReadPixels(work, block, alpha != nullptr ? &mask : nullptr);
    }
    if (result == PictureResult::Ok) {
        dib = std::move(block);
        if (alpha != nullptr) {
            *alpha = std::move(mask);
        }
    }
    return result;
}

PictureResult WritePng(std::FILE* stream, const DibView& view, const DibView* alpha) {
    PngWriter work;
    const PngLayout layout = LayoutFor(view, alpha != nullptr);
    const BlockTable<u8> row(alpha != nullptr ? static_cast<u64>(view.width) * 4 : 1);
    if (work.info == nullptr || !row) {
        return PictureResult::TooLarge;
    }
    work.stream = stream;
    return WriteAll(work, layout, view, alpha, row.Entries()) ? PictureResult::Ok : work.result;
}

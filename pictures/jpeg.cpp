// JPEG files by libjpeg. Its errors jump: every function that calls setjmp holds plain values only,
// and what owns memory lives in its caller.
#include "pictures/formats.h"
#include "pictures/whole_file.h"

#include <csetjmp>

#include <jerror.h>
#include <jpeglib.h>

namespace {

constexpr int kQuality = 95;
// A block of 8 x 8 pixels takes one bit or more of a Huffman-coded file, and sampling stretches it
// by 16 at the most.
constexpr u64 kMostPixelsPerByte = 64 * 8 * 16;

struct JpegErrors {
    jpeg_error_mgr manager;
    std::jmp_buf jump;
    PictureResult result = PictureResult::Ok;
};

PictureResult ResultOfCode(int code) {
    switch (code) {
    case JERR_INPUT_EMPTY:
    case JERR_INPUT_EOF:
    case JWRN_JPEG_EOF:
        return PictureResult::Truncated;
    case JERR_OUT_OF_MEMORY:
        return PictureResult::TooLarge;
    case JERR_IMAGE_TOO_BIG:
        return PictureResult::TooLargeForFormat;
    case JERR_FILE_WRITE:
        return FileFailure(PictureResult::CannotWrite);
    case JERR_FILE_READ:
        return PictureResult::CannotRead;
    case JERR_BAD_PRECISION:
    case JERR_SOF_UNSUPPORTED:
    case JERR_ARITH_NOTIMPL:
    case JERR_CONVERSION_NOTIMPL:
        return PictureResult::UnsupportedKind;
    default:
        return PictureResult::Damaged;
    }
}

[[noreturn]] void OnError(j_common_ptr codec) {
    auto* errors = static_cast<JpegErrors*>(codec->client_data);
    errors->result = ResultOfCode(codec->err->msg_code);
    std::longjmp(errors->jump, 1);
}

// libjpeg makes up the rest of a file that ends early and warns: to us that is an error.
void OnMessage(j_common_ptr codec, int level) {
    if (level < 0 && codec->err->msg_code == JWRN_JPEG_EOF) {
        OnError(codec);
    }
}

template <class Codec>
void InstallErrors(Codec& codec, JpegErrors& errors) {
    codec.err = jpeg_std_error(&errors.manager);
    codec.client_data = &errors;
    errors.manager.error_exit = OnError;
    errors.manager.emit_message = OnMessage;
}

// ---- Reading ------------------------------------------------------------------------------------

struct JpegReader {
    jpeg_decompress_struct codec = {};
    JpegErrors errors;

    JpegReader() { InstallErrors(codec, errors); }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;
    ~JpegReader() { jpeg_destroy_decompress(&codec); }
};

bool ReadHead(JpegReader& reader, std::FILE* stream) {
    if (setjmp(reader.errors.jump) != 0) {
        return false;
    }
    jpeg_create_decompress(&reader.codec);
    jpeg_stdio_src(&reader.codec, stream);
    jpeg_read_header(&reader.codec, TRUE);
    switch (reader.codec.jpeg_color_space) {
    case JCS_GRAYSCALE:
        reader.codec.out_color_space = JCS_GRAYSCALE;
        break;
    case JCS_CMYK:
    case JCS_YCCK:
        reader.codec.out_color_space = JCS_CMYK;
        break;
    default:
        reader.codec.out_color_space = JCS_EXT_BGR;
        break;
    }
    return true;
}

// Inks to blue, green, red. The one maker whose marker such files carry stores them inverted.
void InksToBgr(const u8* inks, u8* bgr, u32 width, bool inverted) {
    const u32 flip = inverted ? 0 : 255;
    for (u32 x = 0; x < width; ++x, inks += 4, bgr += 3) {
        const u32 light = inks[3] ^ flip;
        for (u32 channel = 0; channel < 3; ++channel) {
            bgr[channel] = static_cast<u8>((inks[2 - channel] ^ flip) * light / 255);
        }
    }
}

bool ReadRows(JpegReader& reader, u8* pixels, std::size_t stride) {
    if (setjmp(reader.errors.jump) != 0) {
        return false;
    }
    jpeg_decompress_struct& codec = reader.codec;
    jpeg_start_decompress(&codec);
    const bool inks = codec.out_color_space == JCS_CMYK;
    JSAMPARRAY inkRow = nullptr;
    if (inks) {
        inkRow = codec.mem->alloc_sarray(reinterpret_cast<j_common_ptr>(&codec), JPOOL_IMAGE,
                                         codec.output_width * 4, 1);
    }
    while (codec.output_scanline < codec.output_height) {
        u8* row = pixels + (codec.output_height - 1 - codec.output_scanline) * stride;
        jpeg_read_scanlines(&codec, inks ? inkRow : &row, 1);
        if (inks) {
            InksToBgr(inkRow[0], row, codec.output_width, codec.saw_Adobe_marker != 0);
        }
    }
    jpeg_finish_decompress(&codec);
    return true;
}

// ---- Writing ------------------------------------------------------------------------------------

struct JpegWriter {
    jpeg_compress_struct codec = {};
    JpegErrors errors;

    JpegWriter() { InstallErrors(codec, errors); }
    JpegWriter(const JpegWriter&) = delete;
    JpegWriter& operator=(const JpegWriter&) = delete;
    ~JpegWriter() { jpeg_destroy_compress(&codec); }
};

bool WriteAll(JpegWriter& writer, std::FILE* stream, const DibView& view, u8* row) {
    if (setjmp(writer.errors.jump) != 0) {
        return false;
    }
    jpeg_compress_struct& codec = writer.codec;
    const bool grey = view.imageClass == ImageClass::Grey;
    jpeg_create_compress(&codec);
    jpeg_stdio_dest(&codec, stream);
    codec.image_width = static_cast<u32>(view.width);
    codec.image_height = static_cast<u32>(view.height);
    codec.input_components = grey ? 1 : 3;
    codec.in_color_space = grey ? JCS_GRAYSCALE : JCS_EXT_BGR;
    jpeg_set_defaults(&codec);
    jpeg_set_quality(&codec, kQuality, TRUE);
    jpeg_start_compress(&codec, TRUE);
    for (i32 y = view.height - 1; y >= 0; --y) {
        if (!grey) {
            ReadRowAsBgr(view, y, row);
        }
        JSAMPROW samples = grey ? const_cast<JSAMPROW>(view.Row(y)) : row;
        jpeg_write_scanlines(&codec, &samples, 1);
    }
    jpeg_finish_compress(&codec);
    return true;
}

} // namespace

PictureResult ReadJpeg(const PictureFile& file, OwnedBlock& dib) {
    JpegReader reader;
    if (!ReadHead(reader, file.stream)) {
        return reader.errors.result;
    }
    const jpeg_decompress_struct& codec = reader.codec;
    const u64 pixels = u64{codec.image_width} * codec.image_height;
    if (codec.arith_code == 0 && pixels / kMostPixelsPerByte > file.bytes) {
        return PictureResult::Truncated;
    }
    OwnedBlock block;
    const PictureResult result = codec.out_color_space == JCS_GRAYSCALE
                                     ? NewGreyDib(codec.image_width, codec.image_height, block)
                                     : NewDib(codec.image_width, codec.image_height, 24, 0, block);
    if (result != PictureResult::Ok) {
        return result;
    }
    const BlockLock lock(block.Handle());
    DibView view;
    if (!lock || !ViewDib(lock.Bytes(), BlockSize(block.Handle()), view)) {
        return PictureResult::TooLarge;
    }
    if (!ReadRows(reader, lock.Bytes() + view.head, view.stride)) {
        return reader.errors.result;
    }
    dib = std::move(block);
    return PictureResult::Ok;
}

PictureResult WriteJpeg(std::FILE* stream, const DibView& view) {
    JpegWriter writer;
    const BlockTable<u8> row(static_cast<u64>(view.width) * 3);
    if (!row) {
        return PictureResult::TooLarge;
    }
    return WriteAll(writer, stream, view, row.Entries()) ? PictureResult::Ok : writer.errors.result;
}

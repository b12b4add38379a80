#include "pictures/pictures.h"

#include "pictures/formats.h"
#include "pictures/whole_file.h"
#include "platform/system/system.h"

#include <cstring>
#include <memory>
#include <strings.h>

namespace {

enum class Format { Unknown, Bmp, Png, Jpeg };

struct Signature {
    Format format;
    std::size_t length;
    const char* bytes;
};
constexpr Signature kSignatures[] = {
    {Format::Bmp, 2, "BM"},
    {Format::Png, 8, "\x89PNG\r\n\x1A\n"},
    {Format::Jpeg, 3, "\xFF\xD8\xFF"},
};

struct Extension {
    Format format;
    const char* text;
};
constexpr Extension kExtensions[] = {
    {Format::Bmp, ".bmp"},
    {Format::Png, ".png"},
    {Format::Jpeg, ".jpg"},
    {Format::Jpeg, ".jpeg"},
};

struct CloseStream {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, CloseStream>;

// A pipe or a device has no size to hold a header's claims against.
PictureResult OpenFile(const char* path, Stream& stream, u64& bytes) {
    stream.reset(OpenOrdinaryFile(path, bytes));
    return stream ? PictureResult::Ok : FileFailure(PictureResult::CannotRead);
}

Format FormatOfContent(std::FILE* stream) {
    char head[8] = {};
    const std::size_t length = std::fread(head, 1, sizeof head, stream);
    std::rewind(stream);
    for (const Signature& signature : kSignatures) {
        if (length >= signature.length &&
            std::memcmp(head, signature.bytes, signature.length) == 0) {
            return signature.format;
        }
    }
    return Format::Unknown;
}

Format FormatOfName(const char* path) {
    const char* dot = std::strrchr(path, '.');
    for (const Extension& extension : kExtensions) {
        if (dot != nullptr && strcasecmp(dot, extension.text) == 0) {
            return extension.format;
        }
    }
    return Format::Unknown;
}

PictureResult Decode(const PictureFile& file, OwnedBlock& dib, OwnedBlock* alpha) {
    switch (FormatOfContent(file.stream)) {
    case Format::Bmp:
        return ReadBmp(file, dib);
    case Format::Png:
        return ReadPng(file, dib, alpha);
    case Format::Jpeg:
        return ReadJpeg(file, dib);
    case Format::Unknown:
        break;
    }
    return PictureResult::NotAPicture;
}

PictureResult Encode(Format format, std::FILE* stream, const DibView& view, const DibView* alpha) {
    switch (format) {
    case Format::Bmp:
        return WriteBmp(stream, view);
    case Format::Png:
        return WritePng(stream, view, alpha);
    case Format::Jpeg:
        return WriteJpeg(stream, view);
    case Format::Unknown:
        break;
    }
    return PictureResult::UnknownExtension;
}

} // namespace

const char* DescribePictureResult(PictureResult result) {
    switch (result) {
    case PictureResult::Ok:
        return "no error";
    case PictureResult::NoSuchFile:
        return "there is no such file or folder";
    case PictureResult::NoPermission:
        return "permission denied";
    case PictureResult::NotAFile:
        return "this is not an ordinary file";
    case PictureResult::CannotRead:
        return "the file cannot be read";
    case PictureResult::CannotWrite:
        return "the file cannot be written";
    case PictureResult::DiskFull:
        return "the disk is full";
    case PictureResult::UnknownExtension:
        return "the name does not end in .bmp, .png, .jpg or .jpeg";
    case PictureResult::NotAPicture:
        return "this is not a picture that this program knows (BMP, PNG or JPEG)";
    case PictureResult::Truncated:
        return "the file ends before the picture does";
    case PictureResult::Damaged:
        return "the picture is damaged";
    case PictureResult::UnsupportedKind:
        return "this kind of the file format is not supported";
    case PictureResult::UnsupportedBmpDepth:
        return "only BMP files of 1, 4, 8 and 24 bits are supported";
    case PictureResult::CompressedBmp:
        return "compressed BMP files are not supported";
    case PictureResult::TooLarge:
        return "the picture is too large for this computer's memory";
    case PictureResult::TooLargeForFormat:
        return "the picture is too large for this file format";
    case PictureResult::NoPicture:
        return "there is no picture to write";
    }
    return "unknown error";
}

PictureResult ReadPicture(const char* path, DibHandle& dib, DibHandle* alpha) {
    dib = 0;
    if (alpha != nullptr) {
        *alpha = 0;
    }
    Stream stream;
    PictureFile file = {};
    PictureResult result = OpenFile(path, stream, file.bytes);
    if (result != PictureResult::Ok) {
        return result;
    }
    file.stream = stream.get();
    OwnedBlock picture;
    OwnedBlock transparency;
    result = Decode(file, picture, alpha != nullptr ? &transparency : nullptr);
    if (result == PictureResult::Ok) {
        dib = picture.HandOver();
        if (alpha != nullptr) {
            *alpha = transparency.HandOver();
        }
    }
    return result;
}

bool HasPictureExtension(const char* path) {
    return FormatOfName(path) != Format::Unknown;
}

PictureResult WritePicture(const char* path, DibHandle dib, DibHandle alpha) {
    const Format format = FormatOfName(path);
    if (format == Format::Unknown) {
        return PictureResult::UnknownExtension;
    }
    const BlockLock lock(dib);
    const BlockLock alphaLock(alpha);
    DibView view;
    DibView alphaView;
    if (!lock || !ViewDib(lock.Bytes(), BlockSize(dib), view)) {
        return PictureResult::NoPicture;
    }
    const bool hasAlpha = alphaLock && ViewDib(alphaLock.Bytes(), BlockSize(alpha), alphaView) &&
                          alphaView.bits == 8 && alphaView.width == view.width &&
                          alphaView.height == view.height;
    if (alpha != 0 && !hasAlpha) {
        return PictureResult::NoPicture;
    }
    WholeFile file;
    PictureResult result = file.Create(path);
    if (result == PictureResult::Ok) {
        result = Encode(format, file.Stream(), view, hasAlpha ? &alphaView : nullptr);
    }
    return result == PictureResult::Ok ? file.Commit() : result;
}

// One reader and one writer for each format. A reader's file stands at its beginning.
#pragma once

#include "pictures/dib_rows.h"

#include <cstdio>

struct PictureFile {
    std::FILE* stream;
    u64 bytes; // the file's real size
};

PictureResult ReadBmp(const PictureFile& file, OwnedBlock& dib);
PictureResult ReadPng(const PictureFile& file, OwnedBlock& dib, OwnedBlock* alpha);
PictureResult ReadJpeg(const PictureFile& file, OwnedBlock& dib);

PictureResult WriteBmp(std::FILE* stream, const DibView& view);
// `alpha` is an 8-bit view of the same size, or null.
PictureResult WritePng(std::FILE* stream, const DibView& view, const DibView* alpha);
PictureResult WriteJpeg(std::FILE* stream, const DibView& view);

// What a read that gave too little means.
inline PictureResult ReadFailure(std::FILE* stream) {
    return std::ferror(stream) != 0 ? PictureResult::CannotRead : PictureResult::Truncated;
}

// Picture files as packed DIBs: BMP, PNG and JPEG.
#pragma once

#include "platform/types.h"
#include <zq/document.h>

enum class PictureResult : i32 {
    Ok,
    // Files
    NoSuchFile,
    NoPermission,
    NotAFile,
    CannotRead,
    CannotWrite,
    DiskFull,
    UnknownExtension,
    // Contents
    NotAPicture,
    Truncated,
    Damaged,
    UnsupportedKind,
    UnsupportedBmpDepth,
    CompressedBmp,
    // Sizes
    TooLarge,
    TooLargeForFormat,
    NoPicture,
};

// One line of English without a full stop, fit to follow "name: ".
const char* DescribePictureResult(PictureResult result);

// Reads a picture; its format is told by its content. `dib` receives a new DIB that the caller
// frees, or 0 unless the result is Ok.
//
// BMP of 1, 4, 8 and 24 bits keeps its depth and its palette. PNG: grey pictures become grey DIBs,
// palette pictures 8-bit palette DIBs, others 24-bit. JPEG: grey or 24-bit.
//
// `alpha`, where not null, receives the transparency of a PNG as a grey DIB of the same size, or 0
// when the picture has none; the colours in `dib` are not multiplied by it.
PictureResult ReadPicture(const char* path, DibHandle& dib, DibHandle* alpha = nullptr);

// Whether WritePicture can tell a format from how `path` ends.
bool HasPictureExtension(const char* path);

// Writes a DIB of any depth as .bmp, .png, .jpg or .jpeg, as the path ends. The file appears whole
// or not at all; one that was there before stays until then.
//
// `alpha`, where not 0, is a grey DIB of the same size that a PNG carries as its transparency;
// other formats leave it out.
PictureResult WritePicture(const char* path, DibHandle dib, DibHandle alpha = 0);

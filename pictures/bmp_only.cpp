// Where there are no libraries for the other formats.
#include "pictures/formats.h"

PictureResult ReadPng(const PictureFile&, OwnedBlock&, OwnedBlock*) {
    return PictureResult::UnsupportedKind;
}

PictureResult ReadJpeg(const PictureFile&, OwnedBlock&) {
    return PictureResult::UnsupportedKind;
}

PictureResult WritePng(std::FILE*, const DibView&, const DibView*) {
    return PictureResult::UnsupportedKind;
}

PictureResult WriteJpeg(std::FILE*, const DibView&) {
    return PictureResult::UnsupportedKind;
}

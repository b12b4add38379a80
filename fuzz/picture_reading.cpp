#include "fuzz/picture_reading.h"

#include "pictures/layer_files.h"

namespace {

struct Extents {
    i32 width, height;
    bool operator==(const Extents&) const = default;
};

Extents SizeOf(DibHandle dib) {
    const DibView view = RequireWellFormed(dib);
    return {view.width, view.height};
}

} // namespace

void ReadPictureBytes(std::span<const u8> bytes) {
    const FuzzRun run;
    const FuzzedFile file(bytes);
    DibHandle dib = 0;
    DibHandle alpha = 0;
    const PictureResult result = ReadPicture(file.Path(), dib, &alpha);
    const OwnedBlock keptDib(dib);
    const OwnedBlock keptAlpha(alpha);
    if (result != PictureResult::Ok) {
        Require(dib == 0 && alpha == 0, "what cannot be read gives nothing");
        return;
    }
    const Extents size = SizeOf(dib);
    Require(alpha == 0 || SizeOf(alpha) == size, "transparency has the picture's size");

    OwnedBlock image;
    OwnedBlock mask;
    if (ReadLayer(file.Path(), image, mask) == PictureResult::Ok) {
        Require(SizeOf(image.Handle()) == size && SizeOf(mask.Handle()) == size,
                "a layer has the picture's size");
    }
}

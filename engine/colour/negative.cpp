// Inverts every colour. Pixel rows are inverted to the end of their padding, which so becomes 255.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

namespace {

ByteTable InverseTable() {
    ByteTable table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<u8>(255 - i);
    }
    return table;
}

bool IsPalettePicture(ImageClass imageClass) {
    return imageClass == ImageClass::Palette8 || imageClass == ImageClass::Palette4;
}

} // namespace

DibHandle Negative(DibHandle source) {
    const ByteTable inverse = InverseTable();
    return RunKernel(source, Depths::PaletteAwareAndMono, [&](const KernelRun& run) {
        if (IsPalettePicture(run.source.imageClass)) {
            return ApplyToneMap(run, MapForAll(inverse));
        }
        run.CopyHead();
        return run.ForEachRow(
            [&](const u8* from, u8* to) { MapBytes(from, to, run.source.stride, inverse); });
    });
}

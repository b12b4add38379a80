// Inverts every colour. Pixel rows are inverted to the end of their padding, which so becomes 255.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"
#include "engine/vector/byte_rows.h"

#include <algorithm>
#include <cstdint>

namespace {

ByteTable InverseTable() {
    ByteTable table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<u8>(255 - i);
    }
    return table;
}

// The bytes from the first row's start to the end of the cache's line in which row y ends.
std::size_t EndOfLine(const KernelRun& run, i32 y) {
    constexpr std::size_t kLine = 64;
    const std::size_t all = run.source.size - run.source.head;
    const std::size_t end = (static_cast<std::size_t>(y) + 1) * run.source.stride;
    const auto place = reinterpret_cast<std::uintptr_t>(run.ResultRow(0) + end);
    return std::min(all, end + (kLine - place % kLine) % kLine);
}

bool IsPalettePicture(ImageClass imageClass) {
    return imageClass == ImageClass::Palette8 || imageClass == ImageClass::Palette4;
}

} // namespace

DibHandle Negative(DibHandle source) {
    return RunKernel(source, Depths::PaletteAwareAndMono, [](const KernelRun& run) {
        if (IsPalettePicture(run.source.imageClass)) {
            return ApplyToneMap(run, {.table = InverseTable()});
        }
        run.CopyHead();
        // What is written at a time ends with a line of the cache, not with a row.
        const DibView& source = run.source;
        const Stores stores = StoresFor(source);
        std::size_t done = 0;
        return run.ForEachRow([&](const u8*, u8*, i32 y) {
            const std::size_t end = EndOfLine(run, y);
            InvertBytes(source.Row(0) + done, run.ResultRow(0) + done, end - done, stores);
            done = end;
        });
    });
}

// Turns the hue by an angle and moves the saturation, in integers. The hue step keeps the largest
// and the smallest channel and moves only the middle one. Palette pictures of any kind have their
// palette turned; a grey palette comes out as it was.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/hue_row.h"
#include "engine/colour/tone_map.h"

#include <algorithm>
#include <cstring>

namespace {

// Copies the rows as one run of bytes, and asks and reports where bits 0 to 7 and bit 9 of a byte's
// number are clear: at bytes 0, 256, 1024, 1280, 2048 and so on.
WorkEnd CopyRowsByBytes(const KernelRun& run) {
    const std::size_t bytes = run.source.size - run.source.head;
    std::size_t end = 0;
    for (std::size_t at = 0; at < bytes; at = end) {
        if (!run.GoOn()) {
            return WorkEnd::Stopped;
        }
        ReportProgress(static_cast<i32>(u64{at} * 100 / bytes));
        end = std::min(bytes, at + ((at & 256) == 0 ? 256 : 768));
        std::memcpy(run.ResultRow(0) + at, run.source.Row(0) + at, end - at);
    }
    return WorkEnd::Done;
}

} // namespace

DibHandle HueSaturation(DibHandle source, const HueSaturationParams& params) {
    if (params.hue < -180 || params.hue > 180 || params.saturation < -100 ||
        params.saturation > 100 || (params.hue == 0 && params.saturation == 0)) {
        return 0;
    }
    const i32 degrees = (params.hue + 360) % 360;
    const HueTurn turn{static_cast<u16>(degrees / 60), static_cast<u16>(degrees % 60)};
    const Saturation saturation(params.saturation);
    return RunKernel(source, Depths::PaletteAware, [&](const KernelRun& run) {
        run.CopyHead();
        if (run.source.imageClass == ImageClass::Colour) {
            const auto width = static_cast<std::size_t>(run.source.width);
            const Stores stores = StoresFor(run.source);
            return run.ForEachRow([&](const u8* from, u8* to) {
                TurnPixels(from, to, width, turn, saturation, stores);
            });
        }
        const WorkEnd end = CopyRowsByBytes(run);
        if (end == WorkEnd::Done) {
            ForEachPaletteColour(run, [&](const u8* from, u8* to) {
                TurnPixels(from, to, 1, turn, saturation, Stores::Cached);
            });
        }
        return end;
    });
}

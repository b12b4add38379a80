// Black and white: what is brighter than the level becomes white. A tone at the level is black.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

#include <cstring>

namespace {

class BlackOrWhite {
public:
    explicit BlackOrWhite(i32 level) : level_(level) {
        for (i32 tone = 0; tone < 256; ++tone) {
            grey_[static_cast<std::size_t>(tone)] = level < tone ? 255 : 0;
        }
    }

    const ByteTable& Grey() const { return grey_; }

    // The weights of the luminance add up to 255, so the level is taken 255 times.
    void Colour(const u8* from, u8* to) const {
        const i32 luminance = 76 * from[2] + 150 * from[1] + 29 * from[0];
        std::memset(to, 255 * level_ < luminance ? 255 : 0, 3);
    }

private:
    const i32 level_;
    ByteTable grey_;
};

} // namespace

DibHandle Threshold(DibHandle source, const ThresholdParams& params) {
    if (params.level < 0 || params.level > 255) {
        return 0;
    }
    const BlackOrWhite rule(params.level);
    return RunKernel(source, Depths::PaletteAware, [&](const KernelRun& run) {
        run.CopyHead();
        const i32 width = run.source.width;
        switch (run.source.imageClass) {
        case ImageClass::Colour:
            return run.ForEachRow([&](const u8* from, u8* to) {
                for (i32 x = 0; x < width; ++x, from += 3, to += 3) {
                    rule.Colour(from, to);
                }
            });
        case ImageClass::Grey:
            return run.ForEachRow([&](const u8* from, u8* to) {
                MapBytes(from, to, run.source.rowBytes, rule.Grey());
            });
        default:
            ForEachPaletteColour(run, [&](const u8* from, u8* to) { rule.Colour(from, to); });
            return CopyRows(run);
        }
    });
}

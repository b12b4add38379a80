// Shifts rows sideways and columns up and down by two random walks.
#include "engine/artistic/artistic_kernels.h"
#include "engine/artistic/fetch_row.h"

namespace {

// Goes up or down by one at times, with a chance of `chance` in 1000 each (one in 1000 more for
// up), and stays at others.
class RandomWalk {
public:
    explicit RandomWalk(i32 chance) : chance_(chance) {}

    i32 Step() {
        const i32 draw = EngineRandom() % 1000;
        if (draw < chance_) {
            ++value_;
        } else if (draw > 1000 - chance_) {
            --value_;
        }
        return value_;
    }

private:
    const i32 chance_;
    i32 value_ = 0;
};

} // namespace

DibHandle Wrinkle(DibHandle source, const WrinkleParams& params) {
    if (params.intensity < 1 || params.intensity > 100) {
        return 0;
    }
    const i32 chance = params.intensity * 5;
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const auto width = static_cast<std::size_t>(run.source.width);
        const BlockTable<i32> columnShift(width);
        if (!columnShift) {
            run.CopyHead(); // a black picture rather than none
            ClearPixels(run);
            return WorkEnd::Done;
        }
        RandomWalk columnWalk(chance);
        for (std::size_t x = 0; x < width; ++x) {
            columnShift[x] = columnWalk.Step();
        }
        const auto extremes =
            std::minmax_element(columnShift.Entries(), columnShift.Entries() + width);
        run.CopyHead();
        const DibView& picture = run.source;
        const PixelColour fill = PixelOfColour(params.fillColor, picture);
        RandomWalk rowWalk(chance);
        return WithPixelBytes(picture, [&](auto bytes) {
            return run.ForEachRow([&](const u8*, u8* to, i32 y) {
                const i64 rowShift = rowWalk.Step();
                if (i64{y} + *extremes.first < 0 || i64{y} + *extremes.second >= picture.height) {
                    FetchPixelsOrFill(picture, to, picture.height, fill, [&](i32 x) {
                        return Place{x + rowShift,
                                     i64{y} + columnShift[static_cast<std::size_t>(x)]};
                    });
                    return;
                }
                FetchRow<bytes>(picture, to, [&](i32 x) {
                    return (i64{y} + columnShift[static_cast<std::size_t>(x)]) *
                               static_cast<std::ptrdiff_t>(picture.stride) +
                           NearestColumn<bytes>(picture, x + rowShift);
                });
                const auto outside = static_cast<i32>(
                    std::min<i64>(rowShift < 0 ? -rowShift : rowShift, picture.width));
                const i32 first = rowShift < 0 ? 0 : picture.width - outside;
                for (i32 x = first; x < first + outside; ++x) {
                    CopyPixel<bytes>(fill.data(), to + static_cast<std::size_t>(x) * bytes);
                }
            });
        });
    });
}

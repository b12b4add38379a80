// Takes each pixel from a random place near it.
#include "engine/artistic/artistic_kernels.h"
#include "engine/artistic/fetch_row.h"
#include "engine/vector/random_draws.h"

namespace {

constexpr i32 kLargestSpread = 51;
constexpr i32 kRun = 512; // pixels at a time

// Where the pixels of a row come from: the rows, and how far a column may reach to either side.
struct Reach {
    std::ptrdiff_t rows[kLargestSpread];
    i32 spread;
    i32 centre;
};

// Draws, for each of `count` pixels from column `x` on, the distance to the side and then that
// upwards, and gives the places as bytes behind the picture's first pixel.
template <std::size_t bytes>
void DrawPlaces(const DibView& picture, const Reach& reach, i32 x, i32 count,
                std::ptrdiff_t* places) {
    u16 draws[2 * kRun];
    TakeRandom(draws, 2 * static_cast<std::size_t>(count));
    TakeRemainders(draws, 2 * static_cast<std::size_t>(count), static_cast<u16>(reach.spread));
    const i64 first = i64{x} + reach.centre;
    if (first >= reach.spread - 1 && first + count <= picture.width) {
        const auto middle = static_cast<std::ptrdiff_t>(first);
        for (i32 i = 0; i < count; ++i) {
            places[i] = reach.rows[draws[2 * i + 1]] +
                        static_cast<std::ptrdiff_t>(bytes) * (middle + i - draws[2 * i]);
        }
    } else {
        for (i32 i = 0; i < count; ++i) {
            places[i] = reach.rows[draws[2 * i + 1]] +
                        NearestColumn<bytes>(picture, first + i - draws[2 * i]);
        }
    }
}

} // namespace

DibHandle Splash(DibHandle source, i32 intensity) {
    const i32 spread = std::clamp(intensity / 2, 1, 50) + 1;
    const i32 centre = spread / 2; // with an even spread pixels lean one step to the top right
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        const DibView& picture = run.source;
        return WithPixelBytes(picture, [&](auto bytes) {
            return run.ForEachRow([&](const u8*, u8* to, i32 y) {
                Reach reach{{}, spread, centre};
                for (i32 up = 0; up < spread; ++up) {
                    reach.rows[up] = NearestRow(picture, i64{y} + centre - up);
                }
                std::ptrdiff_t places[kRun];
                for (i32 x = 0, count = 0; x < picture.width; x += count) {
                    count = std::min(kRun, picture.width - x);
                    DrawPlaces<bytes>(picture, reach, x, count, places);
                    CopyPixelsAt<bytes>(picture.Row(0), places, static_cast<std::size_t>(count),
                                        to + static_cast<std::size_t>(x) * bytes);
                }
            });
        });
    });
}

// Shakes rows sideways and diagonals up and down by a sine whose height swells and fades.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"

#include <cmath>
#include <cstdlib>

namespace {

// Four periods of the sine to one swell of `length` rise and `length` fall. Truncation toward zero
// rounds offsets above 0 to nearest and pulls those below 0 up: the shake leans to one side.
void FillOffsets(const BlockTable<i32>& offsets, i64 count, i32 length) {
    constexpr double kFourPi = 12.5663706;
    for (i64 i = 0; i < count; ++i) {
        const i64 swell = std::abs(length - i % (2 * length));
        const double sine = std::sin(static_cast<double>(i) * kFourPi / length);
        offsets[static_cast<std::size_t>(i)] =
            static_cast<i32>(static_cast<double>(swell) * sine * 0.25 + 0.5);
    }
}

} // namespace

DibHandle Ripple(DibHandle source, i32 intensity) {
    const i32 length = std::clamp(intensity, 1, 100) / 2 + 3;
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const i64 diagonals = i64{run.source.width} + run.source.height;
        const BlockTable<i32> offsets(static_cast<u64>(diagonals));
        if (!offsets) {
            return WorkEnd::NoMemory;
        }
        FillOffsets(offsets, diagonals, length);
        run.CopyHead();
        return run.ForEachRow([&](const u8*, u8* to, i32 y) {
            const auto row = static_cast<std::size_t>(y);
            const i64 dx = offsets[row];
            FetchPixels(run.source, to, 0, run.source.width, [&](i32 x) {
                const i64 dy = offsets[row + static_cast<std::size_t>(x)];
                return Place{x + dx, y + dy};
            });
        });
    });
}

// Shakes rows sideways and diagonals up and down by a sine whose height swells and fades.
#include "engine/artistic/artistic_kernels.h"
#include "engine/artistic/fetch_row.h"

#include <cmath>
#include <cstdlib>

namespace {

constexpr i32 kLongest = 53;
constexpr i32 kHighest = kLongest / 4 + 1; // no offset is larger

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
        const DibView& picture = run.source;
        return WithPixelBytes(picture, [&](auto bytes) {
            return run.ForEachRow([&](const u8*, u8* to, i32 y) {
                const i32* const ups = offsets.Entries() + y;
                const i64 dx = ups[0];
                std::ptrdiff_t rows[2 * kHighest + 1];
                for (i32 up = -kHighest; up <= kHighest; ++up) {
                    rows[up + kHighest] = NearestRow(picture, i64{y} + up);
                }
                FetchRow<bytes>(picture, to, [&](i32 x) {
                    return rows[ups[x] + kHighest] + NearestColumn<bytes>(picture, x + dx);
                });
            });
        });
    });
}

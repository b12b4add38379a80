// Shakes rows sideways and diagonals up and down by a sine whose height swells and fades.
#include "engine/artistic/artistic_kernels.h"
#include "engine/artistic/fetch_row.h"

#include <cmath>
#include <cstdlib>

namespace {

constexpr i32 kLongest = 53;
constexpr i32 kHighest = kLongest / 4 + 1; // no offset is larger

// How far up the pixels of each diagonal are shaken, and what that makes in bytes, from where x
// and y are 0.
struct Diagonals {
    BlockTable<i32> ups;
    BlockTable<std::ptrdiff_t> offsets;

    explicit Diagonals(const DibView& picture) : ups(Count(picture)), offsets(Count(picture)) {}

    // False when memory was short.
    explicit operator bool() const { return ups && offsets; }

    static u64 Count(const DibView& picture) {
        return u64{static_cast<u32>(picture.width)} + static_cast<u32>(picture.height);
    }
};

// Four periods of the sine to one swell of `length` rise and `length` fall. Truncation toward zero
// rounds shakes above 0 to nearest and pulls those below 0 up: the shake leans to one side.
void FillDiagonals(const Diagonals& diagonals, const DibView& picture, i32 length) {
    constexpr double kFourPi = 12.5663706;
    const auto stride = static_cast<std::ptrdiff_t>(picture.stride);
    const auto bytes = static_cast<std::ptrdiff_t>(PixelBytes(picture));
    const auto count = static_cast<std::size_t>(Diagonals::Count(picture));
    for (std::size_t i = 0; i < count; ++i) {
        const auto place = static_cast<std::ptrdiff_t>(i);
        const std::ptrdiff_t swell = std::abs(length - place % (2 * length));
        const double sine = std::sin(static_cast<double>(i) * kFourPi / length);
        diagonals.ups[i] = static_cast<i32>(static_cast<double>(swell) * sine * 0.25 + 0.5);
        diagonals.offsets[i] = diagonals.ups[i] * stride + place * bytes;
    }
}

// A row near the top or bottom edge, or the columns near a side: what lies beyond is the edge.
template <std::size_t bytes>
void FetchClamped(const DibView& picture, const i32* ups, i32 y, i32 left, i32 right, u8* to) {
    if (left == right) {
        return;
    }
    const i64 dx = ups[0];
    std::ptrdiff_t rows[2 * kHighest + 1];
    for (i32 up = -kHighest; up <= kHighest; ++up) {
        rows[up + kHighest] = NearestRow(picture, i64{y} + up);
    }
    FetchColumns<bytes>(picture, left, right, to, [&](i32 x) {
        return rows[ups[x] + kHighest] + NearestColumn<bytes>(picture, x + dx);
    });
}

template <std::size_t bytes>
void WriteRow(const DibView& picture, const Diagonals& diagonals, i32 y, u8* to) {
    const i32* const ups = diagonals.ups.Entries() + y;
    const i32 width = picture.width;
    if (y < kHighest || y >= picture.height - kHighest) {
        FetchClamped<bytes>(picture, ups, y, 0, width, to);
        return;
    }
    // Columns that come from within the row.
    const i32 dx = ups[0];
    const i32 left = std::clamp(-dx, 0, width);
    const i32 right = std::clamp(width - dx, left, width);
    const auto first = static_cast<std::size_t>(left);
    FetchClamped<bytes>(picture, ups, y, 0, left, to);
    FetchClamped<bytes>(picture, ups, y, right, width, to);
    // The diagonal that a row begins with is y, and its pixels come from dx columns further on.
    const std::ptrdiff_t begin =
        NearestRow(picture, y) + std::ptrdiff_t{dx - y} * static_cast<std::ptrdiff_t>(bytes);
    CopyPixelsAt<bytes>(picture.Row(0), diagonals.offsets.Entries() + y + first,
                        static_cast<std::size_t>(right - left), to + first * bytes, begin);
}

} // namespace

DibHandle Ripple(DibHandle source, i32 intensity) {
    const i32 length = std::clamp(intensity, 1, 100) / 2 + 3;
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const Diagonals diagonals(run.source);
        if (!diagonals) {
            return WorkEnd::NoMemory;
        }
        FillDiagonals(diagonals, run.source, length);
        run.CopyHead();
        return WithPixelBytes(run.source, [&](auto bytes) {
            return run.ForEachRow(
                [&](const u8*, u8* to, i32 y) { WriteRow<bytes>(run.source, diagonals, y, to); });
        });
    });
}

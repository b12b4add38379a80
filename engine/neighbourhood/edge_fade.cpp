// A soft inner edge for what is not black: each sample becomes the smallest mean along the eight
// rays from it. A ray that the picture's edge cuts short is divided like a whole one, as though the
// picture stood on black. Neither asks nor reports.
#include "engine/frame.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr u32 kLargestRadius = 128;

// No ray's sum is larger than 255 * 129.
using RaySum = u16;

// The sums of the rays that start from the pixels of one row and cross the rows, `dx` columns a
// row. From row to row they slide along the ray: one pixel enters and one leaves.
class CrossingRays {
public:
    CrossingRays(i32 dx, bool up, i32 radius)
        : shift_(up ? dx : -dx), enterRow_(up ? radius : 0), leaveRow_(up ? -1 : -1 - radius),
          enterShift_(up ? -dx * radius : 0), leaveShift_(up ? dx : -dx * (radius + 1)) {}

    // `sums` are those of the row before y, 0 for columns within `margin` outside the picture.
    void Advance(const DibView& source, i64 y, RaySum* sums, std::ptrdiff_t margin) const {
        const std::ptrdiff_t width = source.width;
        const std::size_t kept = static_cast<std::size_t>(width + 2 * margin - 1) * sizeof(RaySum);
        if (shift_ > 0) {
            std::memmove(sums - margin + 1, sums - margin, kept);
        } else if (shift_ < 0) {
            std::memmove(sums - margin, sums - margin + 1, kept);
        }
        if (const u8* leaving = RowOrNone(source, y + leaveRow_)) {
            RaySum* from = sums + leaveShift_;
            for (std::ptrdiff_t x = 0; x < width; ++x) {
                from[x] = static_cast<RaySum>(from[x] - leaving[x]);
            }
        }
        if (const u8* entering = RowOrNone(source, y + enterRow_)) {
            RaySum* to = sums + enterShift_;
            for (std::ptrdiff_t x = 0; x < width; ++x) {
                to[x] = static_cast<RaySum>(to[x] + entering[x]);
            }
        }
    }

private:
    static const u8* RowOrNone(const DibView& source, i64 y) {
        return y >= 0 && y < source.height ? source.Row(static_cast<i32>(y)) : nullptr;
    }

    const i32 shift_;
    const i32 enterRow_;
    const i32 leaveRow_;
    const i32 enterShift_;
    const i32 leaveShift_;
};

// The smaller sum of the rays to the left and to the right of each pixel of a row.
void SumAlongRow(const u8* row, i64 width, i64 radius, RaySum* least) {
    u32 sum = 0;
    for (i64 x = 0; x < width; ++x) {
        sum += row[x];
        if (x > radius) {
            sum -= row[x - radius - 1];
        }
        least[x] = static_cast<RaySum>(sum);
    }
    sum = 0;
    for (i64 x = width - 1; x >= 0; --x) {
        sum += row[x];
        if (x + radius + 1 < width) {
            sum -= row[x + radius + 1];
        }
        least[x] = std::min(least[x], static_cast<RaySum>(sum));
    }
}

WorkEnd Fade(const KernelRun& run, i32 radius) {
    const DibView& source = run.source;
    const std::array<CrossingRays, 6> crossing{{{-1, true, radius},
                                                {0, true, radius},
                                                {1, true, radius},
                                                {-1, false, radius},
                                                {0, false, radius},
                                                {1, false, radius}}};
    const std::ptrdiff_t width = source.width;
    const std::ptrdiff_t margin = radius + 1;
    const std::ptrdiff_t line = width + 2 * margin;
    const BlockTable<RaySum> sums(static_cast<u64>(line) * crossing.size());
    const BlockTable<RaySum> least(static_cast<u64>(width));
    if (!sums || !least) {
        return WorkEnd::NoMemory;
    }
    run.CopyHeadWithoutAsking();
    for (i64 y = -radius; y < source.height; ++y) {
        RaySum* ofRays = sums.Entries() + margin;
        for (const CrossingRays& rays : crossing) {
            rays.Advance(source, y, ofRays, margin);
            ofRays += line;
        }
        if (y < 0) {
            continue;
        }
        const u8* from = source.Row(static_cast<i32>(y));
        u8* to = run.ResultRow(static_cast<i32>(y));
        SumAlongRow(from, width, radius, least.Entries());
        for (std::size_t ray = 0; ray < crossing.size(); ++ray) {
            const RaySum* other = sums.Entries() + margin + static_cast<std::ptrdiff_t>(ray) * line;
            for (std::ptrdiff_t x = 0; x < width; ++x) {
                least.Entries()[x] = std::min(least.Entries()[x], other[x]);
            }
        }
        for (std::ptrdiff_t x = 0; x < width; ++x) {
            to[x] = static_cast<u8>(from[x] == 0 ? 0 : least.Entries()[x] / (radius + 1));
        }
    }
    return WorkEnd::DoneInSilence;
}

} // namespace

DibHandle EdgeFade(DibHandle source, const EdgeFadeParams& params) {
    if (params.radius < 1 || params.radius > kLargestRadius) {
        return 0;
    }
    const auto radius = static_cast<i32>(params.radius);
    return RunKernel(source, Depths::AnyByte,
                     [radius](const KernelRun& run) { return Fade(run, radius); });
}

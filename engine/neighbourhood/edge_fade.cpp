// A soft inner edge for what is not black: each sample becomes the smallest mean along the eight
// rays from it. A ray that the picture's edge cuts short is divided like a whole one, as though the
// picture stood on black. Neither asks nor reports.
#include "engine/frame.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/row_table.h"
#include "engine/vector/box_rows.h"
#include "engine/vector/ray_rows.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr u32 kLargestRadius = 128;

// The rays that cross the rows. From row to row their sums slide along the ray: one sample enters
// and one leaves.
struct CrossingRay {
    i32 dx; // columns a row
    bool up;
};

constexpr std::array<CrossingRay, 6> kCrossingRays{
    {{-1, true}, {0, true}, {1, true}, {-1, false}, {0, false}, {1, false}}};

class RaySums {
public:
    RaySums(const DibView& source, i32 radius)
        : source_(source), radius_(radius), margin_(radius + 1), black_(2 * margin_),
          rows_(kRows, Padded(black_)), sums_(2 * kCrossingRays.size(), Padded(margin_)),
          alongRow_(1, Padded(radius)), least_(1, Padded(margin_)) {}

    // False when memory was short.
    explicit operator bool() const { return rows_ && sums_ && alongRow_ && least_; }

    // From row y - 1 to row y: makes the smallest sum of each sample's rays. To be called for each
    // y from -radius on.
    void Advance(i64 y) {
        LoadRow(y + radius_, kAhead);
        LoadRow(y - 1, kBelow);
        LoadRow(y, kHere);
        LoadRow(y - 1 - radius_, kBehind);
        std::memset(least_.Row(0), 255, Padded(margin_) * sizeof(u16));
        for (std::size_t i = 0; i < kCrossingRays.size(); ++i) {
            Follow(kCrossingRays[i], sums_.Row(2 * i + turn_) + margin_,
                   sums_.Row(2 * i + (1 - turn_)) + margin_);
        }
        turn_ = 1 - turn_;
    }

    // The same with the rays along the row, which is the one of the last Advance.
    const u16* LeastOfRow() {
        const std::ptrdiff_t width = source_.width;
        u16* toTheRight = alongRow_.Row(0) + radius_;
        SumsAlongRow(Sample(kHere, -radius_), static_cast<i32>(margin_), toTheRight - radius_,
                     static_cast<std::size_t>(width + radius_));
        u16* least = least_.Row(0) + margin_;
        KeepLeast(toTheRight, least, static_cast<std::size_t>(width));
        KeepLeast(toTheRight - radius_, least, static_cast<std::size_t>(width));
        return least;
    }

private:
    enum LoadedRow : std::size_t { kAhead, kBelow, kHere, kBehind, kRows };

    std::size_t Padded(std::ptrdiff_t margin) const {
        return static_cast<std::size_t>(source_.width + 2 * margin);
    }
    u8* Sample(LoadedRow row, std::ptrdiff_t x) const { return rows_.Row(row) + black_ + x; }

    void LoadRow(i64 y, LoadedRow row) const {
        if (y >= 0 && y < source_.height) {
            std::memcpy(Sample(row, 0), source_.Row(static_cast<i32>(y)), source_.rowBytes);
        } else {
            std::memset(Sample(row, 0), 0, source_.rowBytes);
        }
    }

    // Sums are made for columns within the radius outside the picture, too: from there a ray's sum
    // slides in. Those still further out are 0.
    void Follow(const CrossingRay& ray, const u16* before, u16* sums) const {
        const std::ptrdiff_t first = -radius_;
        const std::ptrdiff_t dx = ray.dx;
        const u8* entering = ray.up ? Sample(kAhead, first + dx * radius_) : Sample(kHere, first);
        const u8* leaving =
            ray.up ? Sample(kBelow, first - dx) : Sample(kBehind, first + dx * (radius_ + 1));
        SlideRays(before + first + (ray.up ? -dx : dx), entering, leaving, sums + first,
                  least_.Row(0) + margin_ + first, Padded(radius_));
    }

    const DibView& source_;
    const std::ptrdiff_t radius_;
    const std::ptrdiff_t margin_;
    const std::ptrdiff_t black_; // samples around the loaded rows
    const RowTable<u8> rows_;
    const RowTable<u16> sums_; // two rows for each ray, of which one is the older
    const RowTable<u16> alongRow_;
    const RowTable<u16> least_;
    std::size_t turn_ = 0;
};

WorkEnd Fade(const KernelRun& run, i32 radius) {
    const DibView& source = run.source;
    RaySums rays(source, radius);
    if (!rays) {
        return WorkEnd::NoMemory;
    }
    const RoundedDivision mean = RoundedDivision::Down(radius + 1);
    run.CopyHeadWithoutAsking();
    for (i32 y = -radius; y < source.height; ++y) {
        rays.Advance(y);
        if (y >= 0) {
            FadeRow(source.Row(y), rays.LeastOfRow(), mean, run.ResultRow(y), source.rowBytes);
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

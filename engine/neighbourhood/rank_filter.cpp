// The largest or smallest sample of a square, along the rows and then along the columns. Near an
// edge the window is cut off there; repeating the edge sample, as the extended line does, gives the
// same, because the cut window holds it already.
//
// The window doubles: from the extremes of 1 sample come those of 2, 4, 8, 16, and two of these
// that overlap make one of any size between.
#include "engine/neighbourhood/extended_line.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

namespace {

constexpr i32 kLargestSize = 32;

struct Largest {
    u8 operator()(u8 a, u8 b) const { return a > b ? a : b; }
};

struct Smallest {
    u8 operator()(u8 a, u8 b) const { return a < b ? a : b; }
};

// Of each sample and the one `distance` further on, the better.
template <class Better>
void Merge(ExtendedLine& window, std::size_t count, std::size_t distance) {
    window.Rewrite(count, [distance](const u8* from, u8* to, std::size_t n) {
        for (std::size_t i = 0; i < n; ++i) {
            to[i] = Better()(from[i], from[i + distance]);
        }
    });
}

template <class Better>
DibHandle FilterExtremes(DibHandle source, i32 size) {
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        ExtendedLine window(run.source, size);
        if (!window) {
            return WorkEnd::NoMemory;
        }
        return FilterRowsThenColumns(run, [&](const Line& line) {
            window.Load(line);
            const auto whole = static_cast<std::size_t>(size);
            std::size_t reach = 1;
            std::size_t positions = static_cast<std::size_t>(line.count) + whole - 1;
            while (reach < whole) {
                const std::size_t further = std::min(reach, whole - reach);
                positions -= further;
                Merge<Better>(window, positions * line.samples, further * line.samples);
                reach += further;
            }
            window.Store(line);
        });
    });
}

} // namespace

DibHandle RankFilter(DibHandle source, const RankFilterParams& params) {
    if (params.size < 2 || params.size > kLargestSize) {
        return 0;
    }
    return params.takeMaximum != 0 ? FilterExtremes<Largest>(source, params.size)
                                   : FilterExtremes<Smallest>(source, params.size);
}

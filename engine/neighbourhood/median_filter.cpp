// The median of a square. Beyond the edges the edge pixels repeat, so that every window holds
// size * size samples.
//
// A histogram slides along each row. It keeps the running median m and the balance, the number of
// samples at or below m less the wanted rank, and stops as soon as the balance is even: m need not
// be a tone that any sample has. So after the first pixel of a row the tone written may lie above
// the true median, below the next larger sample; this is meant.
#include "engine/frame.h"
#include "engine/neighbourhood/median_rows.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

#include <algorithm>
#include <array>

namespace {

constexpr i32 kLargestSize = 32;

class SlidingMedian {
public:
    void Add(u8 tone) { ++counts_[tone]; }

    void FindFromBlack(i32 rank) {
        median_ = 0;
        balance_ = counts_[0] - rank;
        while (balance_ < 0) {
            StepUp();
        }
    }

    void Exchange(u8 leaving, u8 entering) {
        --counts_[leaving];
        ++counts_[entering];
        balance_ += (entering <= median_ ? 1 : 0) - (leaving <= median_ ? 1 : 0);
    }

    void Settle() {
        while (balance_ > 0) {
            balance_ -= Count(median_);
            --median_;
        }
        while (balance_ < 0) {
            StepUp();
        }
    }

    u8 Median() const { return static_cast<u8>(median_); }

private:
    i32 Count(i32 tone) const { return counts_[static_cast<std::size_t>(tone)]; }
    void StepUp() {
        ++median_;
        balance_ += Count(median_);
    }

    std::array<i32, 256> counts_{};
    i32 median_ = 0;
    i32 balance_ = 0;
};

// The rows of the window at one y, from the lowest.
struct WindowRows {
    std::array<const u8*, kLargestSize> first;
    i32 size;

    WindowRows(const DibView& source, i32 y, i32 windowSize) : first{}, size(windowSize) {
        for (i32 i = 0; i < size; ++i) {
            const i64 row = i64{y} - size / 2 + i;
            first[static_cast<std::size_t>(i)] =
                source.Row(static_cast<i32>(std::clamp<i64>(row, 0, source.height - 1)));
        }
    }
};

template <std::size_t channels>
void FilterRow(const DibView& source, const WindowRows& rows, u8* to) {
    const i32 size = rows.size;
    const i64 last = source.width - 1;
    const auto columnAt = [last](i64 x) {
        return static_cast<std::size_t>(std::clamp<i64>(x, 0, last)) * channels;
    };
    std::array<SlidingMedian, channels> medians;
    const i64 half = size / 2;
    for (i32 i = 0; i < size; ++i) {
        for (i64 x = -half; x < size - half; ++x) {
            const u8* pixel = rows.first[static_cast<std::size_t>(i)] + columnAt(x);
            for (std::size_t channel = 0; channel < channels; ++channel) {
                medians[channel].Add(pixel[channel]);
            }
        }
    }
    for (SlidingMedian& median : medians) {
        median.FindFromBlack((size * size + 1) / 2);
    }
    for (i64 x = 0; x <= last; ++x, to += channels) {
        const std::size_t leaving = columnAt(x - half);
        const std::size_t entering = columnAt(x - half + size);
        for (std::size_t channel = 0; channel < channels; ++channel) {
            SlidingMedian& median = medians[channel];
            to[channel] = median.Median();
            for (i32 i = 0; i < size; ++i) {
                const u8* row = rows.first[static_cast<std::size_t>(i)] + channel;
                median.Exchange(row[leaving], row[entering]);
            }
            median.Settle();
        }
    }
}

} // namespace

DibHandle MedianFilter(DibHandle source, const SquareSizeParams& params) {
    const i32 size = params.size;
    if (size < 2 || size > kLargestSize) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        if (size <= kLargestSortedSize) {
            return run.ForEachRow([&](const u8*, u8* to, i32 y) {
                if (y % kSortedRows == 0) {
                    SortMedianRows(run.source, size, y,
                                   std::min(kSortedRows, run.source.height - y), to);
                }
            });
        }
        return run.ForEachRow([&](const u8*, u8* to, i32 y) {
            const WindowRows rows(run.source, y, size);
            if (run.source.imageClass == ImageClass::Colour) {
                FilterRow<3>(run.source, rows, to);
            } else {
                FilterRow<1>(run.source, rows, to);
            }
        });
    });
}

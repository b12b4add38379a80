// Gives each sample the most frequent band of tones in the square around it, so that detail runs
// together into strokes. At the edges the nearest pixel stands for what lies outside.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"

namespace {

constexpr std::size_t kBands = 32;
constexpr i32 kBandShift = 3; // 8 tones a band, which stands for its lowest one

// Samples per band. The largest square has 201 * 201 of them.
using BandCounts = std::array<u16, kBands>;

// Among bands with equal counts the darkest wins.
u8 WinningTone(const BandCounts& counts) {
    u16 most = 0;
    for (const u16 count : counts) {
        most = std::max(most, count);
    }
    const auto winner = std::find(counts.begin(), counts.end(), most) - counts.begin();
    return static_cast<u8>(winner << kBandShift);
}

// The counts of every column of samples in the rows of a square, which moves up row by row. A
// square's own counts slide over these from left to right, so its size costs nothing.
class ColumnCounts {
public:
    ColumnCounts(const DibView& source, i32 radius)
        : source_(source), radius_(radius), counts_(source.rowBytes) {}

    explicit operator bool() const { return static_cast<bool>(counts_); }

    void MoveToRow(i32 y) {
        if (y > 0) {
            CountRow(y - radius_ - 1, -1);
            CountRow(y + radius_, 1);
            return;
        }
        for (i32 row = -radius_; row <= radius_; ++row) {
            CountRow(row, 1);
        }
    }

    void WriteRow(u8* to) const {
        WithPixelBytes(source_, [&](auto bytes) {
            for (std::size_t channel = 0; channel < bytes; ++channel) {
                WriteChannel<bytes>(to + channel, counts_.Entries() + channel);
            }
        });
    }

private:
    void CountRow(i64 y, i32 change) {
        const u8* row = source_.Row(static_cast<i32>(std::clamp<i64>(y, 0, source_.height - 1)));
        for (std::size_t i = 0; i < source_.rowBytes; ++i) {
            u16& count = counts_[i][row[i] >> kBandShift];
            count = static_cast<u16>(count + change);
        }
    }

    template <std::size_t bytes>
    void WriteChannel(u8* to, const BandCounts* columns) const {
        const auto column = [&](i64 x) -> const BandCounts& {
            const i64 inside = std::clamp<i64>(x, 0, source_.width - 1);
            return columns[static_cast<std::size_t>(inside) * bytes];
        };
        BandCounts square{};
        for (i32 x = -radius_; x <= radius_; ++x) {
            Slide(square, column(x), BandCounts{});
        }
        *to = WinningTone(square);
        for (i64 x = 1; x < source_.width; ++x) {
            Slide(square, column(x + radius_), column(x - radius_ - 1));
            to += bytes;
            *to = WinningTone(square);
        }
    }

    static void Slide(BandCounts& square, const BandCounts& enters, const BandCounts& leaves) {
        for (std::size_t band = 0; band < kBands; ++band) {
            square[band] = static_cast<u16>(square[band] + enters[band] - leaves[band]);
        }
    }

    const DibView& source_;
    const i32 radius_;
    BlockTable<BandCounts> counts_; // one for each byte of a row
};

} // namespace

DibHandle OilPainting(DibHandle source, i32 intensity) {
    const i32 radius = std::clamp(intensity, 1, 100);
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        ColumnCounts columns(run.source, radius);
        if (!columns) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        return run.ForEachRow([&](const u8*, u8* to, i32 y) {
            columns.MoveToRow(y);
            columns.WriteRow(to);
        });
    });
}

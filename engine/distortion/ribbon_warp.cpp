// Bends the picture into a band along a cosine wave: each column slides up by its own distance. The
// top of the picture is cut off, so that the band fits, and what it leaves free is filled.
#include "engine/distortion/distortion_kernels.h"
#include "engine/pixel.h"
#include "engine/tiles.h"
#include "engine/vector/row_map.h"

#include <cmath>

namespace {

// The largest slide: 3/4 of the height at amplitude 100. From the whole height on, reached at 134,
// nothing is left of the band.
i32 BandShift(i32 amplitude, i32 height) {
    constexpr i64 kNothingLeft = 134;
    const i64 shift = std::min<i64>(amplitude, kNothingLeft) * height * 3 / 400;
    return static_cast<i32>(std::min<i64>(shift, height));
}

constexpr i32 kRowsAhead = 16;
// Slopes are steep, and what lies beside them is read again in the next tile.
constexpr i32 kRibbonRows = 512;
// Where the band's edge crosses a tile, so many columns are looked at together.
constexpr i32 kGroup = 32;
static_assert(kTileColumns % kGroup == 0);

// Neighbouring columns, with the least and the largest distance that one of them slid by.
struct Columns {
    std::size_t begin;
    std::size_t count;
    i32 least;
    i32 most;
};

class Ribbon {
public:
    Ribbon(const KernelRun& run, const RibbonParams& params)
        : run_(run), bandShift_(BandShift(params.amplitude, run.source.height)),
          shifts_(static_cast<u64>(run.source.width)),
          offsets_(static_cast<u64>(run.source.width)) {
        const PixelColour fill = PixelOfColour(params.backColor, run.source);
        const std::size_t bytes = PixelBytes(run.source);
        for (std::size_t i = 0; i < fills_.size(); ++i) {
            fills_[i] = fill[i % bytes];
        }
        if (*this) {
            FillTables(params.frequency);
        }
    }

    // False when memory was short.
    explicit operator bool() const { return shifts_ && offsets_; }

    template <std::size_t bytes>
    void WriteTile(const Tile& tile) const {
        const Columns all = ColumnsOf(tile.left, tile.right);
        std::array<Columns, kTileColumns / kGroup> groups;
        std::size_t groupCount = 0;
        for (i32 x = tile.left; x < tile.right; x += kGroup) {
            groups[groupCount++] = ColumnsOf(x, std::min(x + kGroup, tile.right));
        }
        // The rows that the first of the columns will reach; the others reach them later.
        i32 brought = std::max(tile.bottom - all.most, 0);
        for (i32 y = tile.bottom; y < tile.top; ++y) {
            const i32 soon = std::min(y - all.least + kRowsAhead, run_.source.height);
            for (; brought < soon; ++brought) {
                const u8* row = run_.source.Row(brought) + all.begin * bytes;
                PrefetchToRead(row, row + all.count * bytes);
            }
            if (y + kRowsAhead < tile.top) {
                const u8* row = run_.ResultRow(y + kRowsAhead) + all.begin * bytes;
                PrefetchToWrite(row, row + all.count * bytes);
            }
            if (ShowsBand(y, all.least) && ShowsBand(y, all.most)) {
                CopyColumns<bytes>(y, all);
                continue;
            }
            for (std::size_t i = 0; i < groupCount; ++i) {
                WriteColumns<bytes>(y, groups[i]);
            }
        }
    }

private:
    static constexpr std::size_t kMostPixelBytes = 3;

    void FillTables(i32 frequency) {
        constexpr double kPi = 3.1415926;
        const DibView& source = run_.source;
        const double waveStep = frequency * 0.1 / source.width;
        for (i32 x = 0; x < source.width; ++x) {
            const double wave = std::cos(x * waveStep * kPi);
            const i32 shift = static_cast<i32>((wave + 1.0) * 0.5 * bandShift_);
            const auto column = static_cast<std::size_t>(x);
            shifts_[column] = shift;
            offsets_[column] = static_cast<std::ptrdiff_t>(column * PixelBytes(source)) -
                               static_cast<std::ptrdiff_t>(source.stride) * shift;
        }
    }

    // Whether a column that slid by `shift` shows the band in row y.
    bool ShowsBand(i32 y, i32 shift) const {
        return y >= shift && y - shift < run_.source.height - bandShift_;
    }

    Columns ColumnsOf(i32 begin, i32 end) const {
        const i32* shifts = shifts_.Entries();
        const auto [least, most] = std::minmax_element(shifts + begin, shifts + end);
        return {static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin), *least,
                *most};
    }

    template <std::size_t bytes>
    void CopyColumns(i32 y, const Columns& columns) const {
        CopyPixelsAt<bytes>(run_.source.Row(y), offsets_.Entries() + columns.begin, columns.count,
                            run_.ResultRow(y) + columns.begin * bytes);
    }

    template <std::size_t bytes>
    void WriteColumns(i32 y, const Columns& columns) const {
        if (ShowsBand(y, columns.least) && ShowsBand(y, columns.most)) {
            CopyColumns<bytes>(y, columns);
            return;
        }
        u8* to = run_.ResultRow(y) + columns.begin * bytes;
        std::memcpy(to, fills_.data(), columns.count * bytes);
        if (y < columns.least || y - columns.most >= run_.source.height - bandShift_) {
            return;
        }
        for (std::size_t x = columns.begin; x < columns.begin + columns.count; ++x, to += bytes) {
            if (ShowsBand(y, shifts_[x])) {
                CopyPixel<bytes>(run_.source.Row(y) + offsets_[x], to);
            }
        }
    }

    const KernelRun& run_;
    const i32 bandShift_;
    const BlockTable<i32> shifts_;
    // From a pixel's row to where it comes from.
    const BlockTable<std::ptrdiff_t> offsets_;
    std::array<u8, kGroup * kMostPixelBytes> fills_;
};

} // namespace

DibHandle RibbonWarp(DibHandle source, const RibbonParams& params) {
    if (params.amplitude < 0) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const Ribbon ribbon(run, params);
        if (!ribbon) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        return WithPixelBytes(run.source, [&](auto bytes) {
            return ForEachTile(
                run, RowRhythm::EveryRow, [&](const Tile& tile) { ribbon.WriteTile<bytes>(tile); },
                kRibbonRows);
        });
    });
}

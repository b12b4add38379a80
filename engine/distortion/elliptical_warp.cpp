#include "engine/distortion/elliptical_warp.h"

#include "engine/pixel.h"
#include "engine/tiles.h"
#include "engine/vector/row_map.h"
#include "engine/vector/turned_offsets.h"

#include <bit>
#include <cstdlib>

namespace {

constexpr i32 kFullShift = 9; // of a factor that becomes 512, the index of the rim
constexpr i32 kWordBits = 31;

// Coordinates are doubled and centred, so that they are whole for even and odd sizes alike.
constexpr i64 Centred(i32 position, i32 extent) {
    return 2 * i64{position} + 1 - extent;
}

// An index is the sum of two terms, the squares of dx and dy by those of the edges. On large
// pictures the squares are kept within 31 bits, at the price of coarser divisors.
class EllipticalIndex {
public:
    EllipticalIndex(i32 width, i32 height) {
        const i64 cornerX = Square(1 - i64{width});
        const i64 cornerY = Square(1 - i64{height});
        const i32 bits =
            static_cast<i32>(std::bit_width(static_cast<u64>(cornerX) + static_cast<u64>(cornerY)));
        shift_ = std::min(kFullShift, kWordBits - std::min(bits, kWordBits));
        normX_ = std::max<i64>(cornerX >> (kFullShift - shift_), 1);
        normY_ = std::max<i64>(cornerY >> (kFullShift - shift_), 1);
    }

    i32 ColumnTerm(i64 dx) const { return static_cast<i32>((Square(dx) << shift_) / normX_); }
    i32 RowTerm(i64 dy) const { return static_cast<i32>((Square(dy) << shift_) / normY_); }

private:
    static constexpr i64 Square(i64 value) { return value * value; }

    i32 shift_;
    i64 normX_;
    i64 normY_;
};

RingFactors FactorsOf(const TurnTable& turns) {
    RingFactors factors{};
    factors.scalesOnly = true;
    for (std::size_t ring = 0; ring < turns.size(); ++ring) {
        const Turn& turn = turns[std::max<std::size_t>(ring, 1)];
        factors.cos[ring] = turn.cos;
        factors.sin[ring] = turn.sin;
        factors.scalesOnly = factors.scalesOnly && turn.sin == 0;
    }
    return factors;
}

// Whether 32 bits hold all offsets, and all sums on the way to a position.
bool FitsVectors(const DibView& source, const RingFactors& factors) {
    i64 reach = 0;
    for (std::size_t ring = 0; ring < kRings; ++ring) {
        reach = std::max(reach, std::abs(i64{factors.cos[ring]}) + std::abs(factors.sin[ring]));
    }
    const i64 extent = std::max(source.width, source.height) + 2 * i64{kSpareEntries};
    return source.size <= INT32_MAX && (reach + static_cast<i64>(kTurnUnit)) * extent <= INT32_MAX;
}

// A row's term, and its columns that lie inside the ellipse.
struct RowOfEllipse {
    i32 term;
    i32 begin;
    i32 end;
};

class EllipseWarp {
public:
    EllipseWarp(const KernelRun& run, const TurnTable& turns)
        : run_(run), factors_(FactorsOf(turns)), fitsVectors_(FitsVectors(run.source, factors_)),
          columnTerms_(static_cast<u64>(run.source.width) + kSpareEntries),
          rows_(static_cast<u64>(run.source.height)) {
        if (*this) {
            FillTables(run.source);
        }
    }

    // False when memory was short.
    explicit operator bool() const { return columnTerms_ && rows_; }

    // Finds the offsets of some rows ahead, so that their pixels are on their way into the cache
    // while others are copied: of each row every eighth pixel, in each row another one.
    template <std::size_t bytes>
    void WarpTile(const Tile& tile) const {
        if (!fitsVectors_) {
            WarpLargeTile<bytes>(tile);
            return;
        }
        constexpr i32 kRowsAhead = 16;
        constexpr i32 kPrefetchStep = 8;
        const u8* pixels = run_.source.Row(0);
        std::array<std::array<u32, kTileColumns + kSpareEntries>, kRowsAhead> offsets;
        for (i32 y = tile.bottom; y < tile.top + kRowsAhead; ++y) {
            u32* found = offsets[static_cast<std::size_t>(y % kRowsAhead)].data();
            if (y >= tile.bottom + kRowsAhead) {
                const RowOfEllipse inside = CopyOutside<bytes>(tile, y - kRowsAhead);
                CopyPixelsAt<bytes>(pixels, found,
                                    static_cast<std::size_t>(inside.end - inside.begin),
                                    run_.ResultRow(y - kRowsAhead) +
                                        static_cast<std::size_t>(inside.begin) * bytes);
            }
            if (y < tile.top) {
                const RowOfEllipse inside = PartInTile(tile, y);
                FindTurnedOffsets(picture_, factors_, y, inside.term, inside.begin, inside.end,
                                  found);
                for (i32 i = y % kPrefetchStep; i < inside.end - inside.begin; i += kPrefetchStep) {
                    __builtin_prefetch(pixels + found[i]);
                }
                u8* to = run_.ResultRow(y);
                PrefetchToWrite(to + static_cast<std::size_t>(tile.left) * bytes,
                                to + static_cast<std::size_t>(tile.right) * bytes);
            }
        }
    }

private:
    void FillTables(const DibView& source) {
        picture_ = {source.width,
                    source.height,
                    static_cast<i32>(source.stride),
                    static_cast<i32>(PixelBytes(source)),
                    columnTerms_.Entries(),
                    true};
        const EllipticalIndex index(source.width, source.height);
        i32* terms = columnTerms_.Entries();
        for (i32 x = 0; x < source.width; ++x) {
            terms[x] = index.ColumnTerm(Centred(x, source.width));
            if (x > 0 && std::abs(terms[x] - terms[x - 1]) > 1) {
                picture_.neighbouringRings = false;
            }
        }
        std::fill_n(terms + source.width, kSpareEntries, terms[source.width - 1]);
        // The ellipse has no gaps, and ends as far from the right edge as from the left one.
        i32* const middle = terms + (i64{source.width} + 1) / 2;
        for (i32 y = 0; y < source.height; ++y) {
            const i32 term = index.RowTerm(Centred(y, source.height));
            i32* const first = std::partition_point(
                terms, middle, [=](i32 columnTerm) { return columnTerm + term >= kRimIndex; });
            const i32 begin = static_cast<i32>(first - terms);
            rows_[static_cast<std::size_t>(y)] = {term, begin,
                                                  std::max(begin, source.width - begin)};
        }
    }

    RowOfEllipse PartInTile(const Tile& tile, i32 y) const {
        const RowOfEllipse& row = rows_[static_cast<std::size_t>(y)];
        return {row.term, std::clamp(row.begin, tile.left, tile.right),
                std::clamp(row.end, tile.left, tile.right)};
    }

    // Gives the part that is left to do.
    template <std::size_t bytes>
    RowOfEllipse CopyOutside(const Tile& tile, i32 y) const {
        const RowOfEllipse inside = PartInTile(tile, y);
        const auto copy = [&](i32 begin, i32 end) {
            const std::size_t offset = static_cast<std::size_t>(begin) * bytes;
            std::memcpy(run_.ResultRow(y) + offset, run_.source.Row(y) + offset,
                        static_cast<std::size_t>(end - begin) * bytes);
        };
        copy(tile.left, inside.begin);
        copy(inside.end, tile.right);
        return inside;
    }

    // The plain rule, for pictures whose coordinates need more than 32 bits on the way.
    template <std::size_t bytes>
    void WarpLargeTile(const Tile& tile) const {
        const i64 centreX = i64{picture_.width} * 16384 - 8192;
        const i64 centreY = i64{picture_.height} * 16384 - 8192;
        for (i32 y = tile.bottom; y < tile.top; ++y) {
            const RowOfEllipse inside = CopyOutside<bytes>(tile, y);
            const i64 dy = Centred(y, picture_.height);
            FetchPixels(run_.source, run_.ResultRow(y), inside.begin, inside.end, [&](i32 x) {
                const i64 dx = Centred(x, picture_.width);
                const auto ring = static_cast<std::size_t>(picture_.columnTerms[x] + inside.term);
                const i64 cos = factors_.cos[ring];
                const i64 sin = factors_.sin[ring];
                return Place{(cos * dx - sin * dy + centreX) >> 15,
                             (sin * dx + cos * dy + centreY) >> 15};
            });
        }
    }

    const KernelRun& run_;
    const RingFactors factors_;
    const bool fitsVectors_;
    const BlockTable<i32> columnTerms_;
    const BlockTable<RowOfEllipse> rows_;
    TurnedPicture picture_ = {};
};

} // namespace

WorkEnd WarpEllipse(const KernelRun& run, const TurnTable& turns, RowRhythm rhythm) {
    const EllipseWarp warp(run, turns);
    if (!warp) {
        return WorkEnd::NoMemory;
    }
    run.CopyHead();
    return WithPixelBytes(run.source, [&](auto bytes) {
        return ForEachTile(run, rhythm, [&](const Tile& tile) { warp.WarpTile<bytes>(tile); });
    });
}

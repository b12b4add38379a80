// Extremes may be taken in any order. Those along the columns come first, for several rows at once:
// what all their windows hold is read once. They and the steps along the rows stay in the first
// cache, because a piece of the rows goes through all of them before the next one.
#include "engine/vector/extreme_rows.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/extreme_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/row_loop-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

constexpr std::size_t kPiece = 2048;
constexpr std::size_t kLine = 64;
// Of a piece with what its windows hold on both sides, what lies before it in a cache line, and
// what the last vectors reach beyond it.
constexpr std::size_t kRoom = kPiece + 4 * kLine;

struct Larger {
    static constexpr u8 kNeverTaken = 0;
    template <class... Vectors>
    HWY_INLINE ByteVector operator()(ByteVector first, Vectors... others) const {
        ((first = hn::Max(first, others)), ...);
        return first;
    }
};

struct Smaller {
    static constexpr u8 kNeverTaken = 255;
    template <class... Vectors>
    HWY_INLINE ByteVector operator()(ByteVector first, Vectors... others) const {
        ((first = hn::Min(first, others)), ...);
        return first;
    }
};

// Works on `count` bytes in whole vectors, of which the last two may overlap.
template <class Work>
HWY_INLINE void ForOverlapping(std::size_t count, const Work& work) {
    const ByteTag tag;
    const std::size_t lanes = hn::Lanes(tag);
    if (count < lanes) {
        work(
            0, [&](const u8* from) { return LoadPart(from, count); },
            [&](ByteVector vector, u8* to) { StorePart(vector, to, count); });
        return;
    }
    for (std::size_t i = 0;; i = std::min(i + lanes, count - lanes)) {
        work(
            i, [&](const u8* from) { return hn::LoadU(tag, from); },
            [&](ByteVector vector, u8* to) { hn::StoreU(vector, tag, to); });
        if (i == count - lanes) {
            return;
        }
    }
}

// The extremes of `size` rows that begin with row 0, 1 ... kRows - 1, from `begin` to `end`.
template <std::size_t kRows, class Better>
void ExtremesAlongColumns(const u8* const* rows, std::size_t size, std::size_t begin,
                          std::size_t end, u8* to) {
    const Better better;
    ForOverlapping(end - begin, [&](std::size_t i, const auto& load, const auto& store) {
        const auto at = [&](std::size_t row) HWY_ATTR { return load(rows[row] + begin + i); };
        std::array<ByteVector, kRows> fromRow;
        ByteVector shared = at(kRows - 1);
        for (std::size_t row = kRows; row < size; ++row) {
            shared = better(shared, at(row));
        }
        fromRow[kRows - 1] = shared;
        for (std::size_t row = kRows - 1; row-- > 0;) {
            fromRow[row] = better(fromRow[row + 1], at(row));
        }
        store(fromRow[0], to + i);
        ByteVector upToRow = at(size);
        store(better(fromRow[1], upToRow), to + kRoom + i);
        for (std::size_t row = 2; row < kRows; ++row) {
            upToRow = better(upToRow, at(size + row - 1));
            store(better(fromRow[row], upToRow), to + row * kRoom + i);
        }
    });
}

// From windows of `reach` samples to those of `whole`, up to four times as many.
template <class Better>
void Widen(const u8* from, std::size_t reach, std::size_t whole, std::size_t step, u8* to,
           std::size_t count, Stores stores) {
    const auto better = [](std::size_t, auto... windows) HWY_ATTR { return Better()(windows...); };
    const u8* second = from + reach * step;
    const u8* third = second + reach * step;
    const u8* last = from + (whole - reach) * step;
    if (whole <= 2 * reach) {
        ForVectors(to, count, stores, better, from, last);
    } else if (whole <= 3 * reach) {
        ForVectors(to, count, stores, better, from, second, last);
    } else {
        ForVectors(to, count, stores, better, from, second, third, last);
    }
}

template <class Better>
void ExtremesAlongRow(const ExtremeSquares& squares, const u8* samples, u8* to, std::size_t count) {
    const std::size_t size = squares.size;
    const std::size_t step = squares.step;
    alignas(kLine) u8 room[2][kRoom];
    std::size_t reach = 1;
    for (std::size_t turn = 0; 4 * reach < size; ++turn, reach *= 4) {
        const std::size_t wanted = count + (size - 4 * reach) * step;
        Widen<Better>(samples, reach, 4 * reach, step, room[turn % 2],
                      (wanted + kLine - 1) / kLine * kLine, Stores::Cached);
        samples = room[turn % 2];
    }
    Widen<Better>(samples, reach, size, step, to, count, squares.stores);
}

// Gets what the next piece reads of a row under way. The processor does not see it coming: it
// would have to follow too many rows.
void FetchPiece(const u8* row, std::size_t begin, std::size_t rowBytes) {
    for (std::size_t i = begin; i < std::min(begin + kPiece, rowBytes); i += kLine) {
        hwy::Prefetch(row + i);
    }
}

template <std::size_t kRows, class Better>
void ExtremesOfRows(const ExtremeSquares& squares, const u8* const* from, std::span<u8* const> to) {
    const std::size_t before = squares.size / 2 * squares.step;
    const std::size_t behind = (squares.size - 1) * squares.step - before;
    const std::size_t rowBytes = squares.rowBytes;
    alignas(kLine) u8 room[kRows * kRoom];
    for (std::size_t begin = 0; begin < rowBytes; begin += kPiece) {
        const std::size_t end = std::min(begin + kPiece, rowBytes);
        // Pieces of the result are cut where a cache line begins, so that lines are written whole.
        const auto cut = [&](std::size_t at, const u8* row) {
            const auto beyond = reinterpret_cast<std::uintptr_t>(row + at) % kLine;
            return at == 0 || at == rowBytes ? at : at - beyond;
        };
        const std::size_t reachBefore = before + kLine;
        const std::size_t first = begin - std::min(begin, reachBefore);
        const std::size_t last = std::min(end + behind, rowBytes);
        const std::size_t outside = reachBefore - (begin - first);
        ExtremesAlongColumns<kRows, Better>(from, squares.size, first, last, room + outside);
        for (std::size_t row = 0; row < to.size(); ++row) {
            u8* samples = room + row * kRoom;
            std::memset(samples, Better::kNeverTaken, outside);
            std::memset(samples + outside + last - first, Better::kNeverTaken, end + behind - last);
            FetchPiece(from[squares.size - 1 + row], last, rowBytes);
            const std::size_t cutBegin = cut(begin, to[row]);
            ExtremesAlongRow<Better>(squares, samples + kLine - (begin - cutBegin),
                                     to[row] + cutBegin, cut(end, to[row]) - cutBegin);
        }
    }
}

template <class Better>
void ExtremesOf(const ExtremeSquares& squares, const u8* const* from, std::span<u8* const> to) {
    switch (squares.RowsAtOnce()) {
    case 2:
        return ExtremesOfRows<2, Better>(squares, from, to);
    case 4:
        return ExtremesOfRows<4, Better>(squares, from, to);
    case 8:
        return ExtremesOfRows<8, Better>(squares, from, to);
    default:
        return ExtremesOfRows<16, Better>(squares, from, to);
    }
}

void ExtremesOfSquares(const ExtremeSquares& squares, const u8* const* from,
                       std::span<u8* const> to) {
    (squares.which == Extreme::Largest ? ExtremesOf<Larger> : ExtremesOf<Smaller>)(squares, from,
                                                                                   to);
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(ExtremesOfSquares);

void ExtremesOfSquares(const ExtremeSquares& squares, const u8* const* from,
                       std::span<u8* const> to) {
    HWY_DYNAMIC_DISPATCH(ExtremesOfSquares)(squares, from, to);
}

#endif

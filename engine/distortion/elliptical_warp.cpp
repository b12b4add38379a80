#include "engine/distortion/elliptical_warp.h"

#include "engine/pixel.h"

#include <bit>

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

// The first column inside the ellipse in a row, or the middle when the row lies outside. The
// ellipse ends as far from the other edge.
i32 FirstColumnInside(const BlockTable<i32>& columnTerms, i32 width, i32 rowTerm) {
    const i32* first = columnTerms.Entries();
    const i32* middle = first + (i64{width} + 1) / 2;
    const i32* inside =
        std::partition_point(first, middle, [=](i32 term) { return term + rowTerm >= kRimIndex; });
    return static_cast<i32>(inside - first);
}

} // namespace

WorkEnd WarpEllipse(const KernelRun& run, const TurnTable& turns, RowRhythm rhythm) {
    const DibView& source = run.source;
    const i32 width = source.width;
    const i32 height = source.height;
    const EllipticalIndex index(width, height);
    const BlockTable<i32> columnTerms(static_cast<u64>(width));
    if (!columnTerms) {
        return WorkEnd::NoMemory;
    }
    for (i32 x = 0; x < width; ++x) {
        columnTerms[static_cast<std::size_t>(x)] = index.ColumnTerm(Centred(x, width));
    }
    // The picture's centre less a quarter of a pixel, so that the unit turn lands clear of whole
    // numbers and the shift truncates to the pixel itself.
    const i64 centreX = i64{width} * 16384 - 8192;
    const i64 centreY = i64{height} * 16384 - 8192;
    const std::size_t bytes = PixelBytes(source);
    run.CopyHead();
    return run.ForEachRow(
        [&](const u8* from, u8* to, i32 y) {
            const i64 dy = Centred(y, height);
            const i32 rowTerm = index.RowTerm(dy);
            const i32 left = FirstColumnInside(columnTerms, width, rowTerm);
            const i32 right = std::max(left, width - left);
            const std::size_t leftBytes = static_cast<std::size_t>(left) * bytes;
            const std::size_t rightBytes = static_cast<std::size_t>(right) * bytes;
            std::memcpy(to, from, leftBytes);
            FetchPixels(source, to, left, right, [&](i32 x) {
                const i64 dx = Centred(x, width);
                const i32 ring = columnTerms[static_cast<std::size_t>(x)] + rowTerm;
                const Turn& turn = turns[static_cast<std::size_t>(std::max(ring, 1))];
                return Place{(turn.cos * dx - turn.sin * dy + centreX) >> 15,
                             (turn.sin * dx + turn.cos * dy + centreY) >> 15};
            });
            std::memcpy(to + rightBytes, from + rightBytes, source.rowBytes - rightBytes);
        },
        rhythm);
}

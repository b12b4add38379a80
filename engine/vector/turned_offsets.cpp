#include "engine/vector/turned_offsets.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/turned_offsets.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;
using Lanes = hn::ScalableTag<i32>;
using Vector = hn::Vec<Lanes>;

// The factors of the rings of neighbouring columns. When these differ by one ring at most, all lie
// in one vector of the table; to permute it is much cheaper than to gather.
struct RingsOfColumns {
    const TurnedPicture picture;
    const i32 rowTerm;

    // Looks the factors of the columns from `x` on up in one table.
    Vector Near(const i32* table, i32 x) const {
        const Lanes d;
        const i32 columns = static_cast<i32>(hn::Lanes(d));
        const i32 innermost = std::clamp(picture.width / 2, x, x + columns - 1);
        const i32 leastTerm = picture.columnTerms[innermost];
        const Vector place = hn::Sub(hn::LoadU(d, picture.columnTerms + x), hn::Set(d, leastTerm));
        return hn::TableLookupLanes(hn::LoadU(d, table + leastTerm + rowTerm),
                                    hn::IndicesFromVec(d, place));
    }

    Vector Far(const i32* table, i32 x) const {
        const Lanes d;
        const Vector ring = hn::Add(hn::LoadU(d, picture.columnTerms + x), hn::Set(d, rowTerm));
        // Spare columns, and those behind the last one, may lie beyond the rim.
        return hn::GatherIndex(d, table, hn::Min(ring, hn::Set(d, i32{kRings} - 1)));
    }
};

// From a turned distance to a column or a row of the picture.
class Axis {
public:
    explicit Axis(i32 extent)
        : centre_(hn::Set(Lanes(), extent * 16384 - 8192)), last_(hn::Set(Lanes(), extent - 1)) {}

    Vector NearestPixel(Vector turned) const {
        const Vector position = hn::ShiftRight<15>(hn::Add(turned, centre_));
        return hn::Min(hn::Max(position, hn::Zero(Lanes())), last_);
    }

private:
    // Less a quarter of a pixel, so that the unit turn lands clear of whole numbers and the shift
    // truncates to the pixel itself.
    const Vector centre_;
    const Vector last_;
};

template <bool near, bool scalesOnly>
void FindOffsets(const TurnedPicture picture, const RingFactors& factors, i32 y, i32 rowTerm,
                 i32 begin, i32 end, u32* offsets) {
    const Lanes d;
    const hn::RebindToUnsigned<Lanes> unsignedLanes;
    const i32 columns = static_cast<i32>(hn::Lanes(d));
    const RingsOfColumns rings = {picture, rowTerm};
    const Axis columnAxis(picture.width);
    const Axis rowAxis(picture.height);
    const Vector stride = hn::Set(d, picture.stride);
    const Vector pixelBytes = hn::Set(d, picture.pixelBytes);
    const Vector dy = hn::Set(d, 2 * y + 1 - picture.height);
    Vector dx =
        hn::Add(hn::Set(d, 2 * begin + 1 - picture.width), hn::ShiftLeft<1>(hn::Iota(d, 0)));
    for (i32 x = begin; x < end; x += columns) {
        const auto factorsOf = [&](const auto& table) {
            return near ? rings.Near(table.data(), x) : rings.Far(table.data(), x);
        };
        const Vector cos = factorsOf(factors.cos);
        Vector across = hn::Mul(cos, dx);
        Vector up = hn::Mul(cos, dy);
        if constexpr (!scalesOnly) {
            const Vector sin = factorsOf(factors.sin);
            across = hn::Sub(across, hn::Mul(sin, dy));
            up = hn::Add(up, hn::Mul(sin, dx));
        }
        const Vector offset = hn::Add(hn::Mul(rowAxis.NearestPixel(up), stride),
                                      hn::Mul(columnAxis.NearestPixel(across), pixelBytes));
        hn::StoreU(hn::BitCast(unsignedLanes, offset), unsignedLanes, offsets + (x - begin));
        dx = hn::Add(dx, hn::Set(d, 2 * columns));
    }
}

void FindTurnedOffsets(const TurnedPicture& picture, const RingFactors& factors, i32 y, i32 rowTerm,
                       i32 begin, i32 end, u32* offsets) {
    const auto find =
        picture.neighbouringRings
            ? (factors.scalesOnly ? FindOffsets<true, true> : FindOffsets<true, false>)
            : (factors.scalesOnly ? FindOffsets<false, true> : FindOffsets<false, false>);
    find(picture, factors, y, rowTerm, begin, end, offsets);
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(FindTurnedOffsets);

void FindTurnedOffsets(const TurnedPicture& picture, const RingFactors& factors, i32 y, i32 rowTerm,
                       i32 begin, i32 end, u32* offsets) {
    HWY_DYNAMIC_DISPATCH(FindTurnedOffsets)(picture, factors, y, rowTerm, begin, end, offsets);
}

#endif

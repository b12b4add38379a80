#include "engine/relief/wandering_cells.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/relief/wandering_cells.cpp"
#include <hwy/foreach_target.h>

#include "engine/vector/row_loop-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void AddWanderingCells(const u8* from, const u8* drifts, u8* to, std::size_t count,
                       const WanderingCells& cells, std::size_t start, u8 y, Stores stores) {
    const ByteTag tag;
    const auto set = [&](i32 value) { return hn::Set(tag, static_cast<u8>(value)); };
    ForVectors(
        to, count, stores,
        [&](std::size_t i, ByteVector bytes, ByteVector drift) {
            const ByteVector place = hn::And(hn::Add(drift, set(y)), set(cells.cellMask));
            const auto is = [&](i32 other) {
                return hn::VecFromMask(tag, hn::Eq(place, set(other)));
            };
            const ByteVector groove = hn::Or(is(0), is(cells.cellMask));
            const ByteVector free =
                hn::And(hn::LoadU(tag, cells.inner.At(start + i)), set(cells.bevel));
            const ByteVector up =
                hn::Or(hn::LoadU(tag, cells.up.At(start + i)), hn::And(free, is(1)));
            const ByteVector down = hn::Or(hn::LoadU(tag, cells.down.At(start + i)),
                                           hn::And(free, is(cells.cellMask - 1)));
            return hn::SaturatedSub(hn::SaturatedAdd(bytes, hn::AndNot(groove, up)),
                                    hn::AndNot(groove, down));
        },
        from, drifts);
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(AddWanderingCells);

void AddWanderingCells(const u8* from, const u8* drifts, u8* to, std::size_t count,
                       const WanderingCells& cells, std::size_t start, u8 y, Stores stores) {
    HWY_DYNAMIC_DISPATCH(AddWanderingCells)(from, drifts, to, count, cells, start, y, stores);
}

#endif

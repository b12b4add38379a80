#include "engine/vector/byte_rows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/byte_rows.cpp"
#include <hwy/foreach_target.h>

#include "engine/vector/row_loop-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void CopyBytes(const u8* from, u8* to, std::size_t count, Stores stores) {
    ForVectors(
        to, count, stores, [](std::size_t, ByteVector bytes) { return bytes; }, from);
}

void InvertBytes(const u8* from, u8* to, std::size_t count, Stores stores) {
    ForVectors(
        to, count, stores, [](std::size_t, ByteVector bytes) { return hn::Not(bytes); }, from);
}

void AddPattern(const u8* from, u8* to, std::size_t count, const RowPattern& up,
                const RowPattern& down, Stores stores) {
    ForVectors(
        to, count, stores,
        [&](std::size_t i, ByteVector bytes) {
            const ByteVector raised = hn::SaturatedAdd(bytes, hn::LoadU(ByteTag(), up.At(i)));
            return hn::SaturatedSub(raised, hn::LoadU(ByteTag(), down.At(i)));
        },
        from);
}

void AddDifference(const u8* high, const u8* low, u8* to, std::size_t count,
                   const RowPattern& ground, Stores stores) {
    ForVectors(
        to, count, stores,
        [&](std::size_t i, ByteVector upper, ByteVector lower) {
            // At least one of the two differences is 0.
            const ByteVector raised = hn::SaturatedAdd(hn::LoadU(ByteTag(), ground.At(i)),
                                                       hn::SaturatedSub(upper, lower));
            return hn::SaturatedSub(raised, hn::SaturatedSub(lower, upper));
        },
        high, low);
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(CopyBytes);
HWY_EXPORT(InvertBytes);
HWY_EXPORT(AddPattern);
HWY_EXPORT(AddDifference);

void CopyBytes(const u8* from, u8* to, std::size_t count, Stores stores) {
    HWY_DYNAMIC_DISPATCH(CopyBytes)(from, to, count, stores);
}

void InvertBytes(const u8* from, u8* to, std::size_t count, Stores stores) {
    HWY_DYNAMIC_DISPATCH(InvertBytes)(from, to, count, stores);
}

void AddPattern(const u8* from, u8* to, std::size_t count, const RowPattern& up,
                const RowPattern& down, Stores stores) {
    HWY_DYNAMIC_DISPATCH(AddPattern)(from, to, count, up, down, stores);
}

void AddDifference(const u8* high, const u8* low, u8* to, std::size_t count,
                   const RowPattern& ground, Stores stores) {
    HWY_DYNAMIC_DISPATCH(AddDifference)(high, low, to, count, ground, stores);
}

#endif

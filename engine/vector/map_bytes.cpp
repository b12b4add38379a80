#include "engine/vector/map_bytes.h"

#include "engine/vector/row_pattern.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/map_bytes.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>

#include "engine/vector/byte_table-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void MapBytes(const u8* from, u8* to, std::size_t count, const ByteTable& table, Stores stores) {
    const VectorTable mapped(table);
    ForVectors(
        to, count, stores, [&](std::size_t, ByteVector tones) { return mapped[tones]; }, from);
}

void MapChannel(const u8* from, u8* to, std::size_t count, const RowPattern& chosen,
                const ByteTable& table, Stores stores) {
    const VectorTable mapped(table);
    ForVectors(
        to, count, stores,
        [&](std::size_t i, ByteVector tones) {
            return hn::IfVecThenElse(hn::LoadU(ByteTag(), chosen.At(i)), mapped[tones], tones);
        },
        from);
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(MapBytes);
HWY_EXPORT(MapChannel);

void MapBytes(const u8* from, u8* to, std::size_t count, const ByteTable& table, Stores stores) {
    HWY_DYNAMIC_DISPATCH(MapBytes)(from, to, count, table, stores);
}

void MapChannel(const u8* from, u8* to, std::size_t count, std::size_t channel,
                const ByteTable& table, Stores stores) {
    const RowPattern chosen([&](std::size_t i) { return i % 3 == channel ? u8{255} : u8{0}; });
    HWY_DYNAMIC_DISPATCH(MapChannel)(from, to, count, chosen, table, stores);
}

#endif

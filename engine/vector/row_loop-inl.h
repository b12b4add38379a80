// Rows of bytes, vector by vector; for vector code, which includes it once for each instruction
// set.
#if defined(ZQ_ROW_LOOP_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_ROW_LOOP_INL_H
#undef ZQ_ROW_LOOP_INL_H
#else
#define ZQ_ROW_LOOP_INL_H
#endif

#include "engine/vector/stores.h"

#include <hwy/highway.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

using ByteTag = hwy::HWY_NAMESPACE::ScalableTag<u8>;
using ByteVector = hwy::HWY_NAMESPACE::VFromD<ByteTag>;

// The `bytes` bytes at `from`, fewer than a vector has, and zeros.
HWY_INLINE ByteVector LoadPart(const u8* from, std::size_t bytes) {
    HWY_ALIGN u8 lanes[HWY_MAX_BYTES] = {};
    std::memcpy(lanes, from, bytes);
    return hwy::HWY_NAMESPACE::Load(ByteTag(), lanes);
}

HWY_INLINE void StorePart(ByteVector vector, u8* to, std::size_t bytes) {
    HWY_ALIGN u8 lanes[HWY_MAX_BYTES];
    hwy::HWY_NAMESPACE::Store(vector, ByteTag(), lanes);
    std::memcpy(to, lanes, bytes);
}

// Writes work(i, vectors at from + i...) to to + i for the whole row of `count` bytes. `to` may be
// one of the sources.
template <class Work, class... Source>
HWY_INLINE void ForVectors(u8* to, std::size_t count, Stores stores, const Work& work,
                           const Source*... from) {
    namespace hn = hwy::HWY_NAMESPACE;
    const ByteTag tag;
    const std::size_t lanes = hn::Lanes(tag);
    std::size_t i = 0;
    const auto part = [&](std::size_t bytes) {
        if (bytes == 0) {
            return;
        }
        StorePart(work(i, LoadPart(from + i, bytes)...), to + i, bytes);
        i += bytes;
    };
    if (stores == Stores::Streamed) {
        const std::size_t beyond = reinterpret_cast<std::uintptr_t>(to) % lanes;
        part(std::min(count, (lanes - beyond) % lanes));
        for (; count - i >= lanes; i += lanes) {
            hn::Stream(work(i, hn::LoadU(tag, from + i)...), tag, to + i);
        }
    } else {
        for (; count - i >= lanes; i += lanes) {
            hn::StoreU(work(i, hn::LoadU(tag, from + i)...), tag, to + i);
        }
    }
    part(count - i);
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif

// Vectors of bytes with the few operations that our loops need, compiled for each instruction set.
// To be included after <hwy/highway.h>, outside of all namespaces.
#if defined(ZQ_BYTES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_BYTES_INL_H
#undef ZQ_BYTES_INL_H
#else
#define ZQ_BYTES_INL_H
#endif

#include "platform/types.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

#if HWY_TARGET == HWY_SCALAR
// The compiler's own vectors, which the baseline of every processor has.
using Vec [[gnu::vector_size(16)]] = u8;
inline constexpr std::size_t kLanes = sizeof(Vec);

HWY_INLINE Vec Load(const u8* from) {
    Vec bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
}
HWY_INLINE void Store(const Vec& bytes, u8* to) {
    std::memcpy(to, &bytes, sizeof bytes);
}
HWY_INLINE Vec Min(const Vec& a, const Vec& b) {
    return a < b ? a : b;
}
HWY_INLINE Vec Max(const Vec& a, const Vec& b) {
    return a > b ? a : b;
}
HWY_INLINE Vec LessOne(const Vec& bytes) {
    return bytes - (bytes > 0 ? Vec{} + 1 : Vec{});
}
HWY_INLINE Vec Fill(u8 byte) {
    return Vec{} + byte;
}
HWY_INLINE Vec Add(const Vec& a, const Vec& b) {
    return a + b;
}
// `same` where a and b are equal, `other` elsewhere.
HWY_INLINE Vec IfEqual(const Vec& a, const Vec& b, const Vec& same, const Vec& other) {
    return a == b ? same : other;
}
#else
namespace hn = hwy::HWY_NAMESPACE;
using Tag = hn::ScalableTag<u8>;
using Vec = hn::Vec<Tag>;
inline constexpr std::size_t kLanes = hn::MaxLanes(Tag());

HWY_INLINE Vec Load(const u8* from) {
    return hn::LoadU(Tag(), from);
}
HWY_INLINE void Store(const Vec& bytes, u8* to) {
    hn::StoreU(bytes, Tag(), to);
}
using hn::Max;
using hn::Min;
HWY_INLINE Vec LessOne(const Vec& bytes) {
    return hn::SaturatedSub(bytes, hn::Set(Tag(), u8{1}));
}
HWY_INLINE Vec Fill(u8 byte) {
    return hn::Set(Tag(), byte);
}
using hn::Add;
HWY_INLINE Vec IfEqual(const Vec& a, const Vec& b, const Vec& same, const Vec& other) {
    return hn::IfThenElse(hn::Eq(a, b), same, other);
}
#endif

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif

// Running sums of the samples above a level of tone in a window that moves to the right, compiled
// for each instruction set. To be included after <hwy/highway.h>, outside of all namespaces.
#if defined(ZQ_MEDIAN_SUMS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_MEDIAN_SUMS_INL_H
#undef ZQ_MEDIAN_SUMS_INL_H
#else
#define ZQ_MEDIAN_SUMS_INL_H
#endif

#include "engine/neighbourhood/median_strips-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

// Up to 225 samples, in bytes.
class ByteSum {
public:
    static constexpr i32 kLargestSize = 15;
    static constexpr std::size_t kAtOnce = 5; // levels whose sums the registers hold

    explicit ByteSum(i32 limit) : sum_(Bytes{} - static_cast<u8>(limit)) {}
    HWY_INLINE void Move(Bytes entering, Bytes leaving) { sum_ += entering - leaving; }
    // How many more than the limit.
    HWY_INLINE SignedBytes Excess() const { return (SignedBytes)sum_; }

private:
    Bytes sum_;
};

// The numbers of a vector of bytes as 16 bits, in two vectors, and two such vectors as one, what is
// beyond a byte becoming the nearest one.
#if HWY_MAX_BYTES == 64
HWY_INLINE Shorts WidenLower(Bytes bytes, Bytes signs) {
    return (Shorts)_mm512_unpacklo_epi8((__m512i)bytes, (__m512i)signs);
}
HWY_INLINE Shorts WidenUpper(Bytes bytes, Bytes signs) {
    return (Shorts)_mm512_unpackhi_epi8((__m512i)bytes, (__m512i)signs);
}
HWY_INLINE SignedBytes Narrow(Shorts lower, Shorts upper) {
    return (SignedBytes)_mm512_packs_epi16((__m512i)lower, (__m512i)upper);
}
#elif HWY_MAX_BYTES == 32
HWY_INLINE Shorts WidenLower(Bytes bytes, Bytes signs) {
    return (Shorts)_mm256_unpacklo_epi8((__m256i)bytes, (__m256i)signs);
}
HWY_INLINE Shorts WidenUpper(Bytes bytes, Bytes signs) {
    return (Shorts)_mm256_unpackhi_epi8((__m256i)bytes, (__m256i)signs);
}
HWY_INLINE SignedBytes Narrow(Shorts lower, Shorts upper) {
    return (SignedBytes)_mm256_packs_epi16((__m256i)lower, (__m256i)upper);
}
#else
// The even bytes are the lower ones here; of a number only the sign is kept.
HWY_INLINE Shorts WidenLower(Bytes bytes, Bytes) {
    return ((Shorts)bytes << 8) >> 8;
}
HWY_INLINE Shorts WidenUpper(Bytes bytes, Bytes) {
    return (Shorts)bytes >> 8;
}
HWY_INLINE SignedBytes Narrow(Shorts lower, Shorts upper) {
    const Shorts even = (lower < 0) - (lower > 0);
    const Shorts odd = (upper < 0) - (upper > 0);
    return (SignedBytes)((even & 0xff) | (odd << 8));
}
#endif

// More samples, in 16 bits for each sum.
class ShortSum {
public:
    static constexpr i32 kLargestSize = kLargestMedianSize;
    static constexpr std::size_t kAtOnce = 3;

    explicit ShortSum(i32 limit) : lower_(Shorts{} - static_cast<i16>(limit)), upper_(lower_) {}
    HWY_INLINE void Move(Bytes entering, Bytes leaving) {
        const Bytes change = entering - leaving;
        const Bytes sign = (Bytes)((SignedBytes)change < 0);
        lower_ += WidenLower(change, sign);
        upper_ += WidenUpper(change, sign);
    }
    HWY_INLINE SignedBytes Excess() const { return Narrow(lower_, upper_); }

private:
    Shorts lower_, upper_;
};

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif

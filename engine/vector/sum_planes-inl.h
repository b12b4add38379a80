// Sums of bytes in words. Those at even places and those at odd ones lie in planes of their own:
// bytes become words, and words bytes, without leaving their places.
// For vector code, which includes it once for each instruction set.
#if defined(ZQ_SUM_PLANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_SUM_PLANES_INL_H
#undef ZQ_SUM_PLANES_INL_H
#else
#define ZQ_SUM_PLANES_INL_H
#endif

#include "engine/vector/box_rows.h"
#include "engine/vector/byte_words-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// Where a vector is a single byte, the even plane holds everything.
constexpr std::size_t kPlanes = HWY_TARGET == HWY_SCALAR ? 1 : 2;

struct Sums {
    WordVector even;
    WordVector odd;
};

HWY_INLINE Sums operator+(const Sums& a, const Sums& b) {
    namespace hn = hwy::HWY_NAMESPACE;
    return {hn::Add(a.even, b.even), hn::Add(a.odd, b.odd)};
}

HWY_INLINE Sums operator-(const Sums& a, const Sums& b) {
    namespace hn = hwy::HWY_NAMESPACE;
    return {hn::Sub(a.even, b.even), hn::Sub(a.odd, b.odd)};
}

HWY_INLINE Sums operator*(const Sums& sums, u16 factor) {
    namespace hn = hwy::HWY_NAMESPACE;
    const auto factors = hn::Set(WordTag(), factor);
    return {hn::Mul(sums.even, factors), hn::Mul(sums.odd, factors)};
}

HWY_INLINE Sums WordsOf(ByteVector bytes) {
    return {EvenWords(bytes), OddWords(bytes)};
}

struct Planes {
    u16* even;
    u16* odd;

    HWY_INLINE Planes From(std::size_t place) const {
        const std::size_t word = place / kPlanes;
        return place % kPlanes == 0 ? Planes{even + word, odd + word}
                                    : Planes{odd + word, even + word + 1};
    }
    HWY_INLINE Sums Get() const {
        namespace hn = hwy::HWY_NAMESPACE;
        return {hn::LoadU(WordTag(), even), hn::LoadU(WordTag(), odd)};
    }
    HWY_INLINE void Set(const Sums& sums) const {
        namespace hn = hwy::HWY_NAMESPACE;
        hn::StoreU(sums.even, WordTag(), even);
        hn::StoreU(sums.odd, WordTag(), odd);
    }
};

// A RoundedDivision in registers.
struct Division {
    WordVector half;
    WordVector scale;
    WordVector factor;

    HWY_INLINE explicit Division(const RoundedDivision& division)
        : half(hwy::HWY_NAMESPACE::Set(WordTag(), division.half)),
          scale(hwy::HWY_NAMESPACE::Set(WordTag(), division.scale)),
          factor(hwy::HWY_NAMESPACE::Set(WordTag(), division.factor)) {}

    HWY_INLINE WordVector operator()(WordVector sums) const {
        namespace hn = hwy::HWY_NAMESPACE;
        return hn::ShiftRight<7>(hn::MulHigh(hn::Mul(hn::Add(sums, half), scale), factor));
    }
    HWY_INLINE ByteVector operator()(const Sums& sums) const {
        return BytesOfWords((*this)(sums.even), (*this)(sums.odd));
    }
};

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif

// Bytes as words of 16 bits for arithmetic: those at even places, those at odd places, and both
// together again. Where a vector is a single byte, what is computed for the odd place is not used.
// For vector code, which includes it once for each instruction set.
#if defined(ZQ_BYTE_WORDS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_BYTE_WORDS_INL_H
#undef ZQ_BYTE_WORDS_INL_H
#else
#define ZQ_BYTE_WORDS_INL_H
#endif

#include "engine/vector/row_loop-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR

using WordTag = hwy::HWY_NAMESPACE::Sisd<u16>;
using WordVector = hwy::HWY_NAMESPACE::VFromD<WordTag>;

HWY_INLINE WordVector EvenWords(ByteVector bytes) {
    return hwy::HWY_NAMESPACE::PromoteTo(WordTag(), bytes);
}
HWY_INLINE WordVector OddWords(ByteVector bytes) {
    return EvenWords(bytes);
}
HWY_INLINE ByteVector BytesOfWords(WordVector even, WordVector) {
    return ByteVector{static_cast<u8>(even.raw)};
}

#else

using WordTag = hwy::HWY_NAMESPACE::Repartition<u16, ByteTag>;
using WordVector = hwy::HWY_NAMESPACE::VFromD<WordTag>;

HWY_INLINE WordVector EvenWords(ByteVector bytes) {
    namespace hn = hwy::HWY_NAMESPACE;
    return hn::And(hn::BitCast(WordTag(), bytes), hn::Set(WordTag(), u16{0xFF}));
}
HWY_INLINE WordVector OddWords(ByteVector bytes) {
    namespace hn = hwy::HWY_NAMESPACE;
    return hn::ShiftRight<8>(hn::BitCast(WordTag(), bytes));
}
// The low byte of each word.
HWY_INLINE ByteVector BytesOfWords(WordVector even, WordVector odd) {
    namespace hn = hwy::HWY_NAMESPACE;
    const WordVector low = hn::Set(WordTag(), u16{0xFF});
    return hn::BitCast(ByteTag(), hn::IfVecThenElse(low, even, hn::ShiftLeft<8>(odd)));
}

#endif

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif

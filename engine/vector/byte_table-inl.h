// A table of 256 bytes in registers; for vector code, which includes it once for each instruction
// set.
#if defined(ZQ_BYTE_TABLE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_BYTE_TABLE_INL_H
#undef ZQ_BYTE_TABLE_INL_H
#else
#define ZQ_BYTE_TABLE_INL_H
#endif

#include "engine/vector/map_bytes.h"
#include "engine/vector/row_loop-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_AVX3_DL

// Four registers hold the table. A permutation looks at seven bits of an index and so at half of
// the table; the eighth bit says which half was meant.
class VectorTable {
public:
    explicit VectorTable(const ByteTable& table) {
        for (std::size_t quarter = 0; quarter < 4; ++quarter) {
            quarters_[quarter] = _mm512_loadu_si512(table.data() + 64 * quarter);
        }
    }

    HWY_INLINE ByteVector operator[](ByteVector index) const {
        const __m512i low = _mm512_permutex2var_epi8(quarters_[0], index.raw, quarters_[1]);
        const __m512i high = _mm512_permutex2var_epi8(quarters_[2], index.raw, quarters_[3]);
        return ByteVector{_mm512_mask_blend_epi8(_mm512_movepi8_mask(index.raw), low, high)};
    }

private:
    __m512i quarters_[4];
};

#elif HWY_TARGET == HWY_SCALAR

class VectorTable {
public:
    explicit VectorTable(const ByteTable& table) : table_(table) {}

    HWY_INLINE ByteVector operator[](ByteVector index) const {
        return ByteVector{table_[index.raw]};
    }

private:
    const ByteTable& table_;
};

#else

// A shuffle looks into a part of sixteen entries: all sixteen parts are asked, and the upper four
// bits of an index, one after the other, choose between two answers.
class VectorTable {
public:
    explicit VectorTable(const ByteTable& table) {
        for (std::size_t part = 0; part < kParts; ++part) {
            parts_[part] = hwy::HWY_NAMESPACE::LoadDup128(ByteTag(), table.data() + 16 * part);
        }
    }

    HWY_INLINE ByteVector operator[](ByteVector index) const {
        namespace hn = hwy::HWY_NAMESPACE;
        return Answer<kParts>(parts_, hn::And(index, hn::Set(ByteTag(), u8{15})), index);
    }

private:
    static constexpr std::size_t kParts = 16;

    // Of `count` parts, those of the lower half are meant where the sign of `chooser` is clear.
    template <std::size_t count>
    static HWY_INLINE ByteVector Answer(const ByteVector* parts, ByteVector place,
                                        ByteVector chooser) {
        namespace hn = hwy::HWY_NAMESPACE;
        if constexpr (count == 1) {
            return hn::TableLookupBytes(*parts, place);
        } else {
            const ByteVector next = hn::Add(chooser, chooser); // the next bit becomes the sign
            const ByteVector lower = Answer<count / 2>(parts, place, next);
            const ByteVector upper = Answer<count / 2>(parts + count / 2, place, next);
            const hn::RebindToSigned<ByteTag> tag;
            return hn::BitCast(ByteTag(), hn::IfNegativeThenElse(hn::BitCast(tag, chooser),
                                                                 hn::BitCast(tag, upper),
                                                                 hn::BitCast(tag, lower)));
        }
    }

    ByteVector parts_[kParts];
};

#endif

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif

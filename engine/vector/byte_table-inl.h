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
        const ByteVector place = hn::And(index, hn::Set(ByteTag(), u8{15}));
        ByteVector answers[kParts];
        for (std::size_t part = 0; part < kParts; ++part) {
            answers[part] = hn::TableLookupBytes(parts_[part], place);
        }
        // The bit that chooses, moved up to the sign.
        ByteVector chooser[4] = {index, index, index, index};
        for (std::size_t level = 0; level < 4; ++level) {
            for (std::size_t times = 3; times > level; --times) {
                chooser[level] = hn::Add(chooser[level], chooser[level]);
            }
        }
        std::size_t count = kParts;
        for (const ByteVector& bit : chooser) {
            count /= 2;
            for (std::size_t i = 0; i < count; ++i) {
                answers[i] = Choose(bit, answers[2 * i + 1], answers[2 * i]);
            }
        }
        return answers[0];
    }

private:
    static constexpr std::size_t kParts = 16;

    static HWY_INLINE ByteVector Choose(ByteVector bit, ByteVector yes, ByteVector no) {
        namespace hn = hwy::HWY_NAMESPACE;
        const hn::RebindToSigned<ByteTag> tag;
        return hn::BitCast(ByteTag(),
                           hn::IfNegativeThenElse(hn::BitCast(tag, bit), hn::BitCast(tag, yes),
                                                  hn::BitCast(tag, no)));
    }

    ByteVector parts_[kParts];
};

#endif

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif

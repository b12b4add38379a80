#include "engine/vector/row_map.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/vector/row_map.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

#if HWY_TARGET == HWY_SCALAR

bool ShuffleBlock(const RowMap&, const RowMap::Block&, const u8*, u8*) {
    return false;
}

bool MixBlock(const RowMap&, const RowMap::Block&, const u8*, const u8*, const u8*, u8*) {
    return false;
}

#else

namespace hn = hwy::HWY_NAMESPACE;
using Tag = hn::ScalableTag<u8>;
using Vec = hn::Vec<Tag>;

template <class D>
inline constexpr std::size_t kPartsIn = hn::MaxLanes(D()) / RowMap::kPartBytes;

template <class D>
HWY_INLINE hn::Vec<D> LoadParts(D tag, const u8* from, const std::size_t* begins) {
    if constexpr (kPartsIn<D> == 1) {
        return hn::LoadU(tag, from + *begins);
    } else {
        const hn::Half<D> half;
        return hn::Combine(tag, LoadParts(half, from, begins + kPartsIn<hn::Half<D>>),
                           LoadParts(half, from, begins));
    }
}

// Of parts that overlap, the later one is there in the end.
template <class D>
HWY_INLINE void StoreParts(D tag, hn::Vec<D> parts, u8* to, const std::size_t* begins) {
    if constexpr (kPartsIn<D> == 1) {
        hn::StoreU(parts, tag, to + *begins);
    } else {
        const hn::Half<D> half;
        StoreParts(half, hn::LowerHalf(half, parts), to, begins);
        StoreParts(half, hn::UpperHalf(half, parts), to, begins + kPartsIn<hn::Half<D>>);
    }
}

HWY_INLINE Vec ShuffleParts(const RowMap::Block& block, std::size_t part, const u8* from) {
    const Vec places = hn::LoadU(Tag(), block.places + part * RowMap::kPartBytes);
    const Vec elsewhere = hn::Xor(places, hn::Set(Tag(), RowMap::kSecond));
    const std::size_t* begins = block.begins + part;
    return hn::Or(
        hn::TableLookupBytesOr0(LoadParts(Tag(), from, begins), places),
        hn::TableLookupBytesOr0(LoadParts(Tag(), from + RowMap::kPartBytes, begins), elsewhere));
}

// Bytes of (one * (256 - share) + other * share) / 256. Those at even places and those at odd ones
// are made by themselves, in 16 bits.
HWY_INLINE Vec Mix(Vec oneBytes, Vec otherBytes, Vec shareBytes) {
    const hn::RepartitionToWide<Tag> words;
    const auto one = hn::BitCast(words, oneBytes);
    const auto other = hn::BitCast(words, otherBytes);
    const auto share = hn::BitCast(words, shareBytes);
    const auto lower = hn::Set(words, u16{0xff});
    const auto upper = hn::Set(words, u16{0xff00});
    const auto evenStep = hn::Sub(hn::And(other, lower), hn::And(one, lower));
    const auto oddStep = hn::Sub(hn::ShiftRight<8>(other), hn::ShiftRight<8>(one));
    const auto even = hn::Add(hn::ShiftLeft<8>(one), hn::Mul(evenStep, hn::And(share, lower)));
    const auto odd = hn::Add(hn::And(one, upper), hn::Mul(oddStep, hn::ShiftRight<8>(share)));
    return hn::BitCast(Tag(), hn::Or(hn::ShiftRight<8>(even), hn::And(odd, upper)));
}

// Calls work(part, begins) for each part that is the first in a vector; begins[0] is where it
// begins in what is written of the block, and those behind it are where the next ones do. False
// when the block is not near.
template <class Work>
HWY_INLINE bool ForParts(const RowMap& map, const RowMap::Block& block, const Work& work) {
    if (!block.isNear) {
        return false;
    }
    const std::size_t bytes = map.PartPixels() * map.PixelBytes();
    const std::size_t begins[RowMap::kParts] = {0, bytes, 2 * bytes, 3 * bytes};
    for (std::size_t part = 0; part < RowMap::kParts; part += kPartsIn<Tag>) {
        work(part, begins + part);
    }
    return true;
}

// Writes a near block, and up to one byte more.
bool ShuffleBlock(const RowMap& map, const RowMap::Block& block, const u8* from, u8* to) {
    return ForParts(map, block, [&](std::size_t part, const std::size_t* begins) {
        StoreParts(Tag(), ShuffleParts(block, part, from), to, begins);
    });
}

bool MixBlock(const RowMap& map, const RowMap::Block& block, const u8* one, const u8* other,
              const u8* shares, u8* to) {
    return ForParts(map, block, [&](std::size_t part, const std::size_t* begins) {
        StoreParts(Tag(),
                   Mix(ShuffleParts(block, part, one), ShuffleParts(block, part, other),
                       LoadParts(Tag(), shares, begins)),
                   to, begins);
    });
}

#endif

void MixBytes(const u8* __restrict one, const u8* __restrict other, const u8* __restrict shares,
              u8* __restrict to, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        // At most 256 * 255. The analyzer does not see that CopyPixels has written both.
        // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult)
        const auto mix = static_cast<u16>(one[i] * (256 - shares[i]) + other[i] * shares[i]);
        to[i] = static_cast<u8>(mix >> 8);
    }
}

// Calls work(block, x, count) for each block's pixels, and for what is left of the row.
template <class Work>
void ForBlocks(const RowMap& map, const Work& work) {
    const RowMap::Block* block = map.Blocks();
    for (std::size_t x = 0; x < map.Width(); x += map.BlockPixels(), ++block) {
        work(*block, x, std::min(map.BlockPixels(), map.Width() - x));
    }
}

} // namespace

void Fetch(const RowMap& map, const u8* from, u8* to) {
    ForBlocks(map, [&](const RowMap::Block& block, std::size_t x, std::size_t count) {
        u8* blockTo = to + x * map.PixelBytes();
        if (!ShuffleBlock(map, block, from, blockTo)) {
            map.CopyPixels(from, x, count, blockTo);
        }
    });
}

void FetchMixed(const RowMap& map, const u8* from, std::size_t next, const u8* shares, u8* to) {
    ForBlocks(map, [&](const RowMap::Block& block, std::size_t x, std::size_t count) {
        const std::size_t begin = x * map.PixelBytes();
        if (MixBlock(map, block, from, from + next, shares + begin, to + begin)) {
            return;
        }
        u8 one[RowMap::kBlockBytes];
        u8 other[RowMap::kBlockBytes];
        map.CopyPixels(from, x, count, one);
        map.CopyPixels(from + next, x, count, other);
        MixBytes(one, other, shares + begin, to + begin, count * map.PixelBytes());
    });
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(Fetch);
HWY_EXPORT(FetchMixed);

RowMap::RowMap(i32 width, std::size_t pixelBytes)
    : width_(static_cast<std::size_t>(width)), pixelBytes_(pixelBytes),
      partPixels_(kPartBytes / pixelBytes), offsets_(width_), blocks_(width_ / BlockPixels() + 1) {}

// What follows on a near block must be the row's, since it may be spoilt.
void RowMap::Finish() const {
    for (std::size_t x = 0; x + BlockPixels() < width_; x += BlockPixels()) {
        Block& block = blocks_[x / BlockPixels()];
        block.isNear = true;
        for (std::size_t i = 0; i < kParts; ++i) {
            block.isNear &= SetPart(&offsets_[x + i * PartPixels()], block.begins[i],
                                    block.places + i * kPartBytes);
        }
    }
}

// Whether the part is near. Behind what is loaded there is a pixel for those who want the next one.
bool RowMap::SetPart(const std::size_t* offsets, std::size_t& begin, u8* places) const {
    const std::size_t loaded = 2 * kPartBytes;
    const std::size_t rowBytes = width_ * pixelBytes_;
    const auto [least, most] = std::minmax_element(offsets, offsets + PartPixels());
    if (rowBytes < loaded + pixelBytes_) {
        return false;
    }
    begin = std::min(*least, rowBytes - loaded - pixelBytes_);
    if (*most + pixelBytes_ > begin + loaded) {
        return false;
    }
    for (std::size_t i = 0; i < PartPixels() * pixelBytes_; ++i) {
        const std::size_t place = offsets[i / pixelBytes_] - begin + i % pixelBytes_;
        places[i] = static_cast<u8>(place < kPartBytes ? place : kSecond + place - kPartBytes);
    }
    return true;
}

void RowMap::CopyPixels(const u8* from, std::size_t x, std::size_t count, u8* to) const {
    pixelBytes_ == 3 ? CopyPixelsAt<3>(from, &offsets_[x], count, to)
                     : CopyPixelsAt<1>(from, &offsets_[x], count, to);
}

void RowMap::Fetch(const u8* from, u8* to) const {
    HWY_DYNAMIC_DISPATCH(Fetch)(*this, from, to);
}

void RowMap::FetchMixed(const u8* from, std::size_t next, const u8* shares, u8* to) const {
    HWY_DYNAMIC_DISPATCH(FetchMixed)(*this, from, next, shares, to);
}

#endif

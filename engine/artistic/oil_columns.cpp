#include "engine/artistic/oil_columns.h"

#include <algorithm>
#include <bit>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/artistic/oil_columns.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/vector/bytes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// All loops below run over pieces of this constant length, which the compiler makes whole vectors.
constexpr std::size_t kPiece = 64;

void FindBands(const u8* tones, u8* bands, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        bands[i] = static_cast<u8>(tones[i] >> kOilBandShift);
    }
}

void FindBandSets(const BandRow& row, std::size_t samples) {
    for (std::size_t block = 0; block * kOilBlock < samples; ++block) {
        const u8* bands = row.bands + block * kOilBlock;
        BandSet set = 0;
        for (std::size_t i = 0; i < kOilBlock; ++i) {
            set |= BandSet{1} << (bands[i] % kOilBands);
        }
        row.sets[block] = set;
    }
}

namespace {

HWY_INLINE void MoveCounts(u8* __restrict counts, const u8* __restrict entering,
                           const u8* __restrict leaving, u8 band) {
    for (std::size_t i = 0; i < kOilBlock; ++i) {
        counts[i] = static_cast<u8>(counts[i] + (entering[i] == band ? 1 : 0) -
                                    (leaving[i] == band ? 1 : 0));
    }
}

void MoveBlock(const OilColumns& columns, const BandRow& entering, const BandRow& leaving,
               std::size_t block) {
    const std::size_t first = block * kOilBlock;
    for (BandSet rest = entering.sets[block] | leaving.sets[block]; rest != 0; rest &= rest - 1) {
        const int band = std::countr_zero(rest);
        MoveCounts(columns.counts + static_cast<std::size_t>(band) * columns.samples + first,
                   entering.bands + first, leaving.bands + first, static_cast<u8>(band));
    }
}

struct OilRun {
    u16 most[kOilRun];
    u8 tones[kOilRun];
};

// to[i] = from[i] + from[i + step] + more[i], or without `more`.
template <class From>
HWY_INLINE void AddShifted(u16* __restrict to, const From* __restrict from, std::size_t step,
                           const u8* __restrict more, std::size_t count) {
    for (std::size_t piece = 0; piece < count; piece += kPiece) {
        if (more != nullptr) {
            for (std::size_t i = piece; i < piece + kPiece; ++i) {
                to[i] = static_cast<u16>(from[i] + from[i + step] + more[i]);
            }
        } else {
            for (std::size_t i = piece; i < piece + kPiece; ++i) {
                to[i] = static_cast<u16>(from[i] + from[i + step]);
            }
        }
    }
}

// Compares the squares' counts of a band, halves[i] + halves[i + reach] + columns[i + 2 * reach],
// with the largest ones so far.
void Choose(OilRun& run, const u16* __restrict halves, const u8* __restrict columns,
            std::size_t reach, u8 tone) {
    const u16* const others = halves + reach;
    const u8* const last = columns + 2 * reach;
    for (std::size_t i = 0; i < kOilRun; ++i) {
        const u16 sum = static_cast<u16>(halves[i] + others[i] + last[i]);
        const bool better = sum > run.most[i];
        run.most[i] = better ? sum : run.most[i];
        run.tones[i] = better ? tone : run.tones[i];
    }
}

// The sums of `radius` columns from each on, by doubling.
const u16* HalfSums(const u8* counts, std::size_t radius, std::size_t channels, std::size_t count,
                    u16 (&room)[2][2 * kOilRun]) {
    std::size_t width = 1;
    int into = 0;
    for (std::size_t bit = std::bit_floor(radius) / 2; bit != 0; bit /= 2, into ^= 1) {
        const bool odd = (radius & bit) != 0;
        const u8* const more = odd ? counts + 2 * width * channels : nullptr;
        const std::size_t left = 2 * width + (odd ? 1 : 0);
        const std::size_t sums = count + (2 * radius - left) * channels;
        if (width == 1) {
            AddShifted(room[into], counts, width * channels, more, sums);
        } else {
            AddShifted(room[into], room[into ^ 1], width * channels, more, sums);
        }
        width = left;
    }
    return room[into ^ 1];
}

BandSet BandsOf(const BandSet* sets, std::size_t first, std::size_t samples) {
    BandSet present = 0;
    for (std::size_t i = first; i < first + samples; i += kOilBlock) {
        present |= sets[i / kOilBlock];
    }
    return present;
}

// Writes the samples of a block. A band's counts are sums of whole vectors of bytes: squares have
// at most 255 samples.
void WriteBlock(const OilColumns& columns, std::size_t block, u8* to, std::size_t count) {
    const std::size_t first = block * kOilBlock;
    const std::size_t reach = columns.radius * columns.channels;
    const BandSet present = BandsOf(columns.present, first, kOilBlock + 2 * reach);
    u8 best[kOilBlock];
    for (std::size_t i = 0; i < kOilBlock; i += kLanes) {
        Vec most = Fill(0);
        Vec tones = Fill(0);
        for (BandSet rest = present; rest != 0; rest &= rest - 1) {
            const int band = std::countr_zero(rest);
            const u8* middle = columns.counts + static_cast<std::size_t>(band) * columns.samples +
                               first + i + reach;
            Vec sum = Load(middle);
            for (std::size_t k = columns.channels; k <= reach; k += columns.channels) {
                sum = Add(sum, Add(Load(middle - k), Load(middle + k)));
            }
            const Vec larger = Max(most, sum);
            tones = IfEqual(larger, most, tones, Fill(static_cast<u8>(band << kOilBandShift)));
            most = larger;
        }
        Store(tones, best + i);
    }
    std::memcpy(to + first, best, std::min(kOilBlock, count - first));
}

// Writes all samples, whatever the size of the squares.
void WriteLargeSquares(const OilColumns& columns, u8* to, std::size_t count) {
    const std::size_t reach = columns.radius * columns.channels;
    OilRun best;
    u16 room[2][2 * kOilRun] = {}; // whole pieces are summed, beyond what counts
    for (std::size_t first = 0; first < count; first += kOilRun) {
        std::memset(best.most, 0, sizeof best.most);
        for (BandSet rest = BandsOf(columns.present, first, kOilRun + 2 * reach); rest != 0;
             rest &= rest - 1) {
            const int band = std::countr_zero(rest);
            const u8* const counts =
                columns.counts + static_cast<std::size_t>(band) * columns.samples + first;
            Choose(best, HalfSums(counts, columns.radius, columns.channels, kOilRun, room), counts,
                   reach, static_cast<u8>(band << kOilBandShift));
        }
        std::memcpy(to + first, best.tones, std::min(kOilRun, count - first));
    }
}

void MoveBlocks(const OilColumns& columns, const BandRow& entering, const BandRow& leaving) {
    for (std::size_t block = 0; block * kOilBlock < columns.samples; ++block) {
        MoveBlock(columns, entering, leaving, block);
    }
}

} // namespace

void MoveOilColumns(const OilColumns& columns, const BandRow& entering, const BandRow& leaving) {
    MoveBlocks(columns, entering, leaving);
}

void MoveAndWriteOil(const OilColumns& columns, const BandRow& entering, const BandRow& leaving,
                     u8* to, std::size_t count) {
    constexpr std::size_t kLargestByteRadius = 7; // 15 * 15 samples
    if (columns.radius > kLargestByteRadius) {
        MoveBlocks(columns, entering, leaving);
        WriteLargeSquares(columns, to, count); // up to 201 * 201 samples
        return;
    }
    // A block is written as soon as those that its squares reach into have moved.
    const std::size_t ahead = (2 * columns.radius * columns.channels + kOilBlock - 1) / kOilBlock;
    const std::size_t blocks = (count + kOilBlock - 1) / kOilBlock;
    for (std::size_t block = 0; block < blocks + ahead; ++block) {
        MoveBlock(columns, entering, leaving, block);
        if (block >= ahead) {
            WriteBlock(columns, block - ahead, to, count);
        }
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(FindBands);
HWY_EXPORT(FindBandSets);
HWY_EXPORT(MoveOilColumns);
HWY_EXPORT(MoveAndWriteOil);

void FindBands(const u8* tones, u8* bands, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(FindBands)(tones, bands, count);
}
void FindBandSets(const BandRow& row, std::size_t samples) {
    HWY_DYNAMIC_DISPATCH(FindBandSets)(row, samples);
}
void MoveOilColumns(const OilColumns& columns, const BandRow& entering, const BandRow& leaving) {
    HWY_DYNAMIC_DISPATCH(MoveOilColumns)(columns, entering, leaving);
}
void MoveAndWriteOil(const OilColumns& columns, const BandRow& entering, const BandRow& leaving,
                     u8* to, std::size_t count) {
    HWY_DYNAMIC_DISPATCH(MoveAndWriteOil)(columns, entering, leaving, to, count);
}

#endif

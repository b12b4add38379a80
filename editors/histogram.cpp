#include "editors/histogram.h"

#include "engine/dib_format.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numeric>
#include <span>

namespace {

using Counts = std::array<u32, kTones>;

// Counts bytes that come in groups, each place of a group by itself. Neighbours count in tables of
// their own: in a run of one colour each would wait for the sum of the one before.
template <std::size_t groupBytes>
class ByteCounter {
public:
    void Add(const u8* bytes, std::size_t groups) {
        for (; groups >= kLanes; groups -= kLanes) {
            for (Lane& lane : lanes_) {
                AddGroup(lane, bytes);
                bytes += groupBytes;
            }
        }
        for (; groups > 0; --groups) {
            AddGroup(lanes_[0], bytes);
            bytes += groupBytes;
        }
    }

    Counts Sum(std::size_t place) const {
        Counts sum{};
        for (const Lane& lane : lanes_) {
            std::ranges::transform(sum, lane[place], sum.begin(), std::plus());
        }
        return sum;
    }

private:
    static constexpr std::size_t kLanes = 4;
    using Lane = std::array<Counts, groupBytes>;

    static void AddGroup(Lane& lane, const u8* bytes) {
        for (std::size_t place = 0; place < groupBytes; ++place) {
            ++lane[place][bytes[place]];
        }
    }

    std::array<Lane, kLanes> lanes_{};
};

template <std::size_t groupBytes>
ByteCounter<groupBytes> CountRows(const DibView& view, std::size_t groupsInRow) {
    ByteCounter<groupBytes> counter;
    for (i32 y = 0; y < view.height; ++y) {
        counter.Add(view.Row(y), groupsInRow);
    }
    return counter;
}

// How many pixels have each index. A row of odd width ends in half a byte.
Counts CountNibbles(const DibView& view) {
    const auto width = static_cast<std::size_t>(view.width);
    const Counts pairs = CountRows<1>(view, width / 2).Sum(0);
    Counts counts{};
    for (std::size_t pair = 0; pair < pairs.size(); ++pair) {
        counts[pair >> 4] += pairs[pair];
        counts[pair & 15] += pairs[pair];
    }
    for (i32 y = 0; width % 2 != 0 && y < view.height; ++y) {
        ++counts[view.Row(y)[width / 2] >> 4];
    }
    return counts;
}

Counts CountIndices(const DibView& view) {
    return view.bits == 4 ? CountNibbles(view)
                          : CountRows<1>(view, static_cast<std::size_t>(view.width)).Sum(0);
}

// The counts of one byte of the palette's entries. An index beyond the palette is black.
void AddOfPalette(const DibView& view, const Counts& indices, std::size_t byteOfEntry,
                  const CountTable& counts) {
    for (std::size_t index = 0; index < indices.size(); ++index) {
        const bool isThere = index < view.paletteEntries;
        const u8 tone = isThere ? view.Palette()[index * kPaletteEntryBytes + byteOfEntry] : 0;
        counts[tone] += indices[index];
    }
}

constexpr std::size_t kBlueByte = 0;

// Red, green and blue lie in a pixel, and in a palette's entry, from behind.
constexpr std::size_t ByteOfChannel(std::size_t channel) {
    return kChannels - 1 - channel;
}

void CountColours(const DibView& view, Histogram& histogram) {
    if (view.bits == 24) {
        const auto counter = CountRows<3>(view, static_cast<std::size_t>(view.width));
        for (std::size_t channel = 1; channel < kChannels; ++channel) {
            std::ranges::copy(counter.Sum(ByteOfChannel(channel)),
                              histogram.channels[channel].Entries());
        }
    } else if (view.bits == 8 || view.bits == 4) {
        const Counts indices = CountIndices(view);
        for (std::size_t channel = 1; channel < kChannels; ++channel) {
            AddOfPalette(view, indices, ByteOfChannel(channel), histogram.channels[channel]);
        }
    }
    for (std::size_t tone = 0; tone < kTones; ++tone) {
        for (std::size_t channel = 1; channel < kChannels; ++channel) {
            histogram.channels[0][tone] += histogram.channels[channel][tone];
        }
    }
}

bool MakeTables(std::span<CountTable> tables) {
    return std::ranges::all_of(tables, [](CountTable& table) {
        table = CountTable(kTones);
        return static_cast<bool>(table);
    });
}

} // namespace

Histogram CountTones(DibHandle picture, bool isGrey) {
    Histogram histogram;
    if (!MakeTables(std::span(histogram.channels).first(isGrey ? 1 : kChannels))) {
        return {};
    }
    const BlockLock lock(picture);
    DibView view;
    if (!lock || !ViewDib(lock.Bytes(), BlockSize(picture), view)) {
        return histogram;
    }
    if (!isGrey) {
        CountColours(view, histogram);
    } else if (view.bits == 8) {
        AddOfPalette(view, CountIndices(view), kBlueByte, histogram.channels[0]);
    }
    return histogram;
}

BarTable MakeBars(const CountTable& counts, i32 height) {
    constexpr u32 kRare = 10;
    constexpr double kTopMargin = 4;
    if (!counts) {
        return {};
    }
    BarTable bars(kTones);
    if (!bars) {
        return bars;
    }
    const std::span<const u32> entries(counts.Entries(), kTones);
    const auto frequent = std::ranges::count_if(entries, [](u32 count) { return count > kRare; });
    const i64 spread = (1 + frequent) * 100 / 256 + 1;
    const auto total = static_cast<double>(std::accumulate(entries.begin(), entries.end(), u64{1}));
    for (std::size_t tone = 0; tone < kTones; ++tone) {
        const double length = std::trunc(counts[tone] * static_cast<double>(height) *
                                         static_cast<double>(spread) / total);
        bars[tone] = static_cast<u16>(std::max(height + 1 - length, kTopMargin));
    }
    return bars;
}

// Spreads the tones so that all are used about equally often. The three channels share one
// histogram and one table. A tone moves by what lies below it, its own count left out, so the
// darkest tone of any picture turns black.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace {

using Histogram = std::array<u32, 256>;

// Counts bytes in several histograms in turn: equal bytes that follow each other would wait for
// each other in one.
class ByteCounter {
public:
    void Count(const u8* row, std::size_t bytes) {
        std::size_t i = 0;
        for (; bytes - i >= sizeof(u64); i += sizeof(u64)) {
            u64 eight = 0;
            std::memcpy(&eight, row + i, sizeof eight);
            for (std::size_t byte = 0; byte < sizeof eight; ++byte) {
                ++counts_[byte][eight >> 8 * byte & 255];
            }
        }
        for (; i < bytes; ++i) {
            ++counts_[0][row[i]];
        }
    }

    void AddTo(Histogram& counts) const {
        for (const Histogram& part : counts_) {
            std::transform(part.begin(), part.end(), counts.begin(), counts.begin(),
                           std::plus<u32>());
        }
    }

private:
    std::array<Histogram, sizeof(u64)> counts_{};
};

void CountNibbles(const u8* row, i32 width, Histogram& counts) {
    for (i32 x = 0; x < width; ++x) {
        const u8 pair = row[x / 2];
        ++counts[x % 2 == 0 ? pair >> 4 : pair & 15];
    }
}

// The tones of a palette picture: each pixel counts with the three of its entry. An index beyond
// the palette is black. The count of the rows asks before each.
WorkEnd CountPalettePicture(const KernelRun& run, Histogram& tones) {
    const DibView& source = run.source;
    Histogram indices{};
    ByteCounter bytes;
    for (i32 y = 0; y < source.height; ++y) {
        if (!run.GoOn()) {
            return WorkEnd::Stopped;
        }
        if (source.imageClass == ImageClass::Palette4) {
            CountNibbles(source.Row(y), source.width, indices);
        } else {
            bytes.Count(source.Row(y), source.rowBytes);
        }
    }
    bytes.AddTo(indices);
    for (u32 index = 0; index < indices.size(); ++index) {
        constexpr u8 kBlack[3] = {};
        const u8* colour = index < source.paletteEntries
                               ? source.Palette() + std::size_t{index} * kPaletteEntryBytes
                               : kBlack;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            tones[colour[channel]] += indices[index];
        }
    }
    return WorkEnd::Done;
}

WorkEnd CountTones(const KernelRun& run, Histogram& tones) {
    const DibView& source = run.source;
    if (source.imageClass != ImageClass::Colour && source.imageClass != ImageClass::Grey) {
        return CountPalettePicture(run, tones);
    }
    ByteCounter bytes;
    for (i32 y = 0; y < source.height; ++y) {
        bytes.Count(source.Row(y), source.rowBytes);
    }
    bytes.AddTo(tones);
    return WorkEnd::Done;
}

ByteTable SpreadTable(const Histogram& tones, double samples) {
    const double factor = 255.0 / (samples + 1.0);
    ByteTable table;
    u64 below = 0;
    for (std::size_t tone = 0; tone < table.size(); ++tone) {
        table[tone] = static_cast<u8>(static_cast<double>(below) * factor + 0.5);
        below += tones[tone];
    }
    return table;
}

} // namespace

DibHandle Equalize(DibHandle source) {
    return RunKernel(source, Depths::PaletteAware, [](const KernelRun& run) {
        Histogram tones{};
        if (const WorkEnd end = CountTones(run, tones); end != WorkEnd::Done) {
            return end;
        }
        const double samplesPerPixel = run.source.imageClass == ImageClass::Grey ? 1 : 3;
        const double samples = samplesPerPixel * run.source.width * run.source.height;
        return ApplyToneMap(run, {.table = SpreadTable(tones, samples)});
    });
}

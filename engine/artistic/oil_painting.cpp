// Gives each sample the most frequent band of tones in the square around it, so that detail runs
// together into strokes. At the edges the nearest pixel stands for what lies outside.
#include "engine/artistic/artistic_kernels.h"
#include "engine/artistic/oil_columns.h"
#include "engine/pixel.h"

namespace {

constexpr std::size_t RoundUp(std::size_t value, std::size_t step) {
    return (value + step - 1) / step * step;
}

// The columns of the squares of a row, which move up row by row.
class MovingColumns {
public:
    MovingColumns(const DibView& source, i32 radius)
        : source_(source), radius_(radius),
          margin_(static_cast<std::size_t>(radius) * PixelBytes(source)),
          samples_(RoundUp(source.rowBytes + 2 * margin_, kOilBlock) + kOilBeyond),
          blocks_(samples_ / kOilBlock), counts_(u64{kOilBands} * samples_),
          bands_(u64{3} * samples_), sets_((2 * static_cast<u64>(radius) + 3) * blocks_),
          present_(blocks_) {}

    explicit operator bool() const { return counts_ && bands_ && sets_ && present_; }

    // To be called for row 0, 1, 2...
    void WriteRow(i32 y, u8* to) {
        const i64 newest = i64{y} + radius_;
        if (y == 0) {
            std::memset(bands_.Entries() + 2 * samples_, kNoBand, samples_);
            for (i64 row = -radius_; row < newest; ++row) {
                MoveOilColumns(Columns(), Entering(row), Nothing());
            }
        }
        const BandRow entering = Entering(newest);
        const BandRow leaving = y == 0 ? Nothing() : Leaving(newest - 2 * radius_ - 1);
        CollectBands(newest);
        MoveAndWriteOil(Columns(), entering, leaving, to, source_.rowBytes);
    }

private:
    OilColumns Columns() const {
        return {counts_.Entries(), present_.Entries(), samples_, PixelBytes(source_),
                static_cast<std::size_t>(radius_)};
    }

    // The sets of a row of the squares or the one that left last; the last set is always empty.
    BandSet* SetsOf(i64 row) const {
        const i64 slot = (row + radius_) % (2 * radius_ + 2);
        return sets_.Entries() + static_cast<std::size_t>(slot) * blocks_;
    }

    BandRow Entering(i64 row) const {
        const BandRow entering = {bands_.Entries(), SetsOf(row)};
        Widen(row, entering.bands);
        FindBandSets(entering, samples_);
        return entering;
    }
    BandRow Leaving(i64 row) const {
        const BandRow leaving = {bands_.Entries() + samples_, SetsOf(row)};
        Widen(row, leaving.bands);
        return leaving;
    }
    BandRow Nothing() const {
        return {bands_.Entries() + 2 * samples_,
                sets_.Entries() + (2 * static_cast<std::size_t>(radius_) + 2) * blocks_};
    }

    void Widen(i64 y, u8* bands) const {
        const u8* tones = source_.Row(static_cast<i32>(std::clamp<i64>(y, 0, source_.height - 1)));
        const std::size_t pixel = PixelBytes(source_);
        const std::size_t end = margin_ + source_.rowBytes;
        FindBands(tones, bands + margin_, source_.rowBytes);
        for (std::size_t i = margin_; i-- > 0;) {
            bands[i] = bands[i + pixel];
        }
        for (std::size_t i = end; i < end + margin_; ++i) {
            bands[i] = bands[i - pixel];
        }
        std::memset(bands + end + margin_, kNoBand, samples_ - end - margin_);
    }

    void CollectBands(i64 newest) const {
        BandSet* const present = present_.Entries();
        std::fill_n(present, blocks_, 0);
        for (i64 row = newest - 2 * radius_; row <= newest; ++row) {
            const BandSet* const sets = SetsOf(row);
            for (std::size_t block = 0; block < blocks_; ++block) {
                present[block] |= sets[block];
            }
        }
    }

    const DibView& source_;
    const i32 radius_;
    const std::size_t margin_;
    const std::size_t samples_; // of a widened row
    const std::size_t blocks_;  // of a widened row
    BlockTable<u8> counts_;
    BlockTable<u8> bands_; // widened rows: the one that enters, the one that leaves, an empty one
    BlockTable<BandSet> sets_;
    BlockTable<BandSet> present_;
};

} // namespace

DibHandle OilPainting(DibHandle source, i32 intensity) {
    const i32 radius = std::clamp(intensity, 1, 100);
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        MovingColumns columns(run.source, radius);
        if (!columns) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        return run.ForEachRow([&](const u8*, u8* to, i32 y) { columns.WriteRow(y, to); });
    });
}

// Cuts the picture into blocks from its bottom left corner on and fills each with its mean.
#include "engine/pixel.h"
#include "engine/relief/relief_kernels.h"
#include "engine/vector/box_rows.h"
#include "engine/vector/byte_rows.h"

namespace {

// So many rows fit the sums of columns.
constexpr i32 kMostAddedRows = 257;

// Blocks are worked on band by band: all rows of a band add to the sums of its columns, these to
// the sums of its blocks, then one row is made of the means and copied to the others.
template <std::size_t bytes>
class BlockSums {
public:
    BlockSums(const DibView& source, i32 blockWidth)
        : width_(source.width), blockWidth_(blockWidth), rowBytes_(source.rowBytes),
          blockBytes_(
              (static_cast<std::size_t>(width_ - 1) / static_cast<std::size_t>(blockWidth) + 1) *
              bytes),
          table_(u64{blockBytes_} * sizeof(u32) + u64{rowBytes_} * sizeof(u16)) {
        if (table_) {
            sums_ = reinterpret_cast<u32*>(table_.Entries());
            columns_ = reinterpret_cast<u16*>(sums_ + blockBytes_);
        }
    }

    explicit operator bool() const { return static_cast<bool>(table_); }

    void AddRows(const DibView& source, i32 first, i32 rows) const {
        while (rows > 0) {
            const i32 some = std::min(rows, kMostAddedRows);
            for (i32 y = first; y < first + some; ++y) {
                AddToSums(source.Row(y), columns_, rowBytes_);
            }
            AddColumns();
            first += some;
            rows -= some;
        }
    }

    // Writes a row of the means and clears the sums.
    void TakeMeans(i32 rows, u8* to) const {
        ForEachBlock([&](u32* sums, i64 pixels) {
            const auto count = static_cast<double>(pixels * rows);
            u8 mean[bytes];
            for (std::size_t channel = 0; channel < bytes; ++channel) {
                // A quotient of such whole numbers is never rounded up to the next one, and found
                // faster than theirs.
                mean[channel] = static_cast<u8>(static_cast<i32>(sums[channel] / count));
                sums[channel] = 0;
            }
            for (i64 i = 0; i < pixels; ++i, to += bytes) {
                CopyPixel<bytes>(mean, to);
            }
        });
    }

private:
    void AddColumns() const {
        const u16* from = columns_;
        ForEachBlock([&](u32* sums, i64 pixels) {
            for (i64 i = 0; i < pixels; ++i, from += bytes) {
                for (std::size_t channel = 0; channel < bytes; ++channel) {
                    sums[channel] += from[channel]; // 32 bits, also for blocks that overflow them
                }
            }
        });
        std::fill_n(columns_, rowBytes_, u16{0});
    }

    template <class Work>
    void ForEachBlock(const Work& work) const {
        u32* sums = sums_;
        for (i64 x = 0; x < width_; x += blockWidth_, sums += bytes) {
            work(sums, std::min<i64>(blockWidth_, width_ - x));
        }
    }

    const i32 width_;
    const i32 blockWidth_;
    const std::size_t rowBytes_;
    const std::size_t blockBytes_;
    const BlockTable<u8> table_;
    u32* sums_ = nullptr;
    u16* columns_ = nullptr;
};

template <std::size_t bytes>
WorkEnd FillBlocks(const KernelRun& run, i32 blockWidth, i32 blockHeight) {
    const i32 height = run.source.height;
    const BlockSums<bytes> sums(run.source, blockWidth);
    if (!sums) {
        return WorkEnd::NoMemory;
    }
    run.CopyHead();
    const Stores stores = StoresFor(run.source);
    for (i64 bandStart = 0; bandStart < height; bandStart += blockHeight) {
        const i32 first = static_cast<i32>(bandStart);
        const i32 rows = std::min(blockHeight, height - first);
        if (!run.BeginLine(first, height)) {
            return WorkEnd::Stopped;
        }
        sums.AddRows(run.source, first, rows);
        sums.TakeMeans(rows, run.ResultRow(first));
        for (i32 y = first + 1; y < first + rows; ++y) {
            CopyBytes(run.ResultRow(first), run.ResultRow(y), run.source.rowBytes, stores);
        }
    }
    return WorkEnd::Done;
}

} // namespace

DibHandle Mosaic(DibHandle source, const MosaicParams& params) {
    if (params.width < 1 || params.height < 1) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        return WithPixelBytes(run.source, [&](auto bytes) {
            return FillBlocks<bytes>(run, std::min(params.width, run.source.width),
                                     std::min(params.height, run.source.height));
        });
    });
}

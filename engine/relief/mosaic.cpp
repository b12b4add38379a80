// Cuts the picture into blocks from its bottom left corner on and fills each with its mean.
#include "engine/pixel.h"
#include "engine/relief/relief_kernels.h"

namespace {

// Blocks are worked on band by band: all rows of a band add to the sums of its blocks, then one
// row is made of the means and copied to the others.
template <std::size_t bytes>
class BlockSums {
public:
    BlockSums(i32 width, i32 blockWidth)
        : width_(width), blockWidth_(blockWidth),
          sums_((static_cast<u64>(width - 1) / static_cast<u64>(blockWidth) + 1) * bytes) {}

    explicit operator bool() const { return static_cast<bool>(sums_); }

    void AddRow(const u8* from) const {
        ForEachBlock([&](u32* sums, i64 pixels) {
            for (i64 i = 0; i < pixels; ++i, from += bytes) {
                for (std::size_t channel = 0; channel < bytes; ++channel) {
                    sums[channel] += from[channel]; // 32 bits, also for blocks that overflow them
                }
            }
        });
    }

    // Writes a row of the means and clears the sums.
    void TakeMeans(i32 rows, u8* to) const {
        ForEachBlock([&](u32* sums, i64 pixels) {
            u8 mean[bytes];
            for (std::size_t channel = 0; channel < bytes; ++channel) {
                mean[channel] = static_cast<u8>(sums[channel] / (pixels * rows));
                sums[channel] = 0;
            }
            for (i64 i = 0; i < pixels; ++i, to += bytes) {
                CopyPixel<bytes>(mean, to);
            }
        });
    }

private:
    template <class Work>
    void ForEachBlock(const Work& work) const {
        u32* sums = sums_.Entries();
        for (i64 x = 0; x < width_; x += blockWidth_, sums += bytes) {
            work(sums, std::min<i64>(blockWidth_, width_ - x));
        }
    }

    const i32 width_;
    const i32 blockWidth_;
    const BlockTable<u32> sums_;
};

template <std::size_t bytes>
WorkEnd FillBlocks(const KernelRun& run, i32 blockWidth, i32 blockHeight) {
    const i32 height = run.source.height;
    const BlockSums<bytes> sums(run.source.width, blockWidth);
    if (!sums) {
        return WorkEnd::NoMemory;
    }
    run.CopyHead();
    for (i64 bandStart = 0; bandStart < height; bandStart += blockHeight) {
        const i32 first = static_cast<i32>(bandStart);
        const i32 rows = std::min(blockHeight, height - first);
        if (!run.BeginLine(first, height)) {
            return WorkEnd::Stopped;
        }
        for (i32 y = first; y < first + rows; ++y) {
            sums.AddRow(run.source.Row(y));
        }
        sums.TakeMeans(rows, run.ResultRow(first));
        for (i32 y = first + 1; y < first + rows; ++y) {
            std::memcpy(run.ResultRow(y), run.ResultRow(first), run.source.rowBytes);
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

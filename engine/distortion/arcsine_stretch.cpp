// Stretches the middle of every row along an arcsine and squeezes its ends, mixing two neighbours.
#include "engine/distortion/distortion_kernels.h"
#include "engine/pixel.h"

#include <cmath>

namespace {

// Where in its row each column comes from: a column and the share of the next one in 1/256. Both
// are kept in 16 bits, so that rows beyond 65536 pixels start again at the left.
class SourceColumns {
public:
    explicit SourceColumns(i32 width)
        : width_(width), positions_(static_cast<u64>(width)), fractions_(static_cast<u64>(width)) {}

    explicit operator bool() const { return positions_ && fractions_; }

    void Fill(i32 x) const {
        constexpr double kOneByPi = 0.31830989161357204;
        double place = 0.0;
        if (width_ >= 2) {
            const double u = 2.0 * x / width_ - 1.0;
            place = (std::asin(u) * kOneByPi + 0.5) * width_;
        }
        const i32 position = static_cast<i32>(place);
        const auto column = static_cast<std::size_t>(x);
        positions_[column] = static_cast<u16>(position);
        fractions_[column] = static_cast<u16>(static_cast<i32>((place - position) * 256.0));
    }

    template <std::size_t bytes>
    void WriteRow(const u8* from, u8* to) const {
        // Rows of one or two pixels have no next column; its share is 0 there.
        const std::size_t next = width_ > 2 ? bytes : 0;
        for (i32 x = 0; x < width_; ++x, to += bytes) {
            const auto column = static_cast<std::size_t>(x);
            const u8* left = from + positions_[column] * bytes;
            const u8* right = left + next;
            const i32 share = fractions_[column];
            for (std::size_t channel = 0; channel < bytes; ++channel) {
                const i32 mix = left[channel] * (256 - share) + right[channel] * share;
                to[channel] = static_cast<u8>(mix >> 8);
            }
        }
    }

private:
    const i32 width_;
    const BlockTable<u16> positions_;
    const BlockTable<u16> fractions_;
};

} // namespace

DibHandle ArcsineStretch(DibHandle source) {
    return RunKernel(source, Depths::GreyOrColour, [](const KernelRun& run) {
        const SourceColumns columns(run.source.width);
        if (!columns) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        for (i32 x = 0; x < run.source.width; ++x) {
            if (!run.GoOn()) {
                return WorkEnd::Stopped;
            }
            columns.Fill(x);
        }
        return WithPixelBytes(run.source, [&](auto bytes) {
            return run.ForEachRow(
                [&](const u8* from, u8* to) { columns.WriteRow<bytes>(from, to); });
        });
    });
}

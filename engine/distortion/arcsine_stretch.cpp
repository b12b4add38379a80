// Stretches the middle of every row along an arcsine and squeezes its ends, mixing two neighbours.
#include "engine/distortion/distortion_kernels.h"
#include "engine/pixel.h"
#include "engine/vector/row_map.h"

#include <cmath>

namespace {

// Where in its row each column comes from: a column and the share of the next one in 1/256. The
// columns are kept in 16 bits, so that rows beyond 65536 pixels start again at the left.
class SourceColumns {
public:
    explicit SourceColumns(const DibView& source)
        : width_(source.width), pixelBytes_(PixelBytes(source)),
          columns_(source.width, pixelBytes_), shares_(source.rowBytes) {}

    explicit operator bool() const { return columns_ && shares_; }

    void Fill(i32 x) const {
        constexpr double kOneByPi = 0.31830989161357204;
        double place = 0.0;
        if (width_ >= 2) {
            const double u = 2.0 * x / width_ - 1.0;
            place = (std::asin(u) * kOneByPi + 0.5) * width_;
        }
        const i32 position = static_cast<i32>(place);
        columns_.Set(x, static_cast<u16>(position));
        std::memset(shares_.Entries() + static_cast<std::size_t>(x) * pixelBytes_,
                    static_cast<i32>((place - position) * 256.0), pixelBytes_);
    }

    void Finish() const { columns_.Finish(); }

    void WriteRow(const u8* from, u8* to) const {
        // Rows of one or two pixels have no next column; its share is 0 there.
        const std::size_t next = width_ > 2 ? pixelBytes_ : 0;
        columns_.FetchMixed(from, next, shares_.Entries(), to);
    }

private:
    const i32 width_;
    const std::size_t pixelBytes_;
    const RowMap columns_;
    const BlockTable<u8> shares_;
};

} // namespace

DibHandle ArcsineStretch(DibHandle source) {
    return RunKernel(source, Depths::GreyOrColour, [](const KernelRun& run) {
        const SourceColumns columns(run.source);
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
        columns.Finish();
        return run.ForEachRow([&](const u8* from, u8* to) { columns.WriteRow(from, to); });
    });
}

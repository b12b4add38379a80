// Shifts rows sideways and columns up and down by two random walks.
#include "engine/artistic/artistic_kernels.h"
#include "engine/artistic/fetch_row.h"

namespace {

// Goes up or down by one at times, with a chance of `chance` in 1000 each (one in 1000 more for
// up), and stays at others.
class RandomWalk {
public:
    explicit RandomWalk(i32 chance) : chance_(chance) {}

    i32 Step() {
        const i32 draw = EngineRandom() % 1000;
        if (draw < chance_) {
            ++value_;
        } else if (draw > 1000 - chance_) {
            --value_;
        }
        return value_;
    }

private:
    const i32 chance_;
    i32 value_ = 0;
};

class Wrinkles {
public:
    Wrinkles(const DibView& picture, u32 fillColor)
        : picture_(picture), fill_(PixelOfColour(fillColor, picture)),
          offsets_(static_cast<u64>(picture.width)) {}

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(offsets_); }

    void ShiftColumns(i32 chance) {
        RandomWalk walk(chance);
        const auto bytes = static_cast<std::ptrdiff_t>(PixelBytes(picture_));
        for (i32 x = 0; x < picture_.width; ++x) {
            // More than the height leaves the picture as well.
            const i32 shift = std::clamp(walk.Step(), -picture_.height, picture_.height);
            lowest_ = std::min(lowest_, shift);
            highest_ = std::max(highest_, shift);
            offsets_[static_cast<std::size_t>(x)] = shift * Stride() + x * bytes;
        }
    }

    template <std::size_t bytes>
    void WriteRow(i32 y, i32 rowShift, u8* to) const {
        // Columns that come from within the row.
        const i32 width = picture_.width;
        const i32 shift = std::clamp(rowShift, -width, width);
        const i32 left = std::max(-shift, 0);
        const i32 right = width - std::max(shift, 0);
        Fill<bytes>(0, left, to);
        Fill<bytes>(right, width, to);
        const std::ptrdiff_t begin = y * Stride() + shift * static_cast<std::ptrdiff_t>(bytes);
        const auto first = static_cast<std::size_t>(left);
        if (i64{y} + lowest_ >= 0 && i64{y} + highest_ < picture_.height) {
            CopyPixelsAt<bytes>(picture_.Row(0), offsets_.Entries() + first,
                                static_cast<std::size_t>(right - left), to + first * bytes, begin);
            return;
        }
        for (i32 x = left; x < right; ++x) {
            const auto column = static_cast<std::size_t>(x);
            const std::ptrdiff_t from = begin + offsets_[column];
            const std::ptrdiff_t row =
                from - std::ptrdiff_t{x + shift} * static_cast<std::ptrdiff_t>(bytes);
            const bool inside = row >= 0 && row < picture_.height * Stride();
            CopyPixel<bytes>(inside ? picture_.Row(0) + from : fill_.data(), to + column * bytes);
        }
    }

private:
    std::ptrdiff_t Stride() const { return static_cast<std::ptrdiff_t>(picture_.stride); }

    template <std::size_t bytes>
    void Fill(i32 begin, i32 end, u8* row) const {
        for (i32 x = begin; x < end; ++x) {
            CopyPixel<bytes>(fill_.data(), row + static_cast<std::size_t>(x) * bytes);
        }
    }

    const DibView& picture_;
    const PixelColour fill_;
    const BlockTable<std::ptrdiff_t> offsets_; // from a row's begin to where its pixels come from
    i32 lowest_ = 0;
    i32 highest_ = 0;
};

} // namespace

DibHandle Wrinkle(DibHandle source, const WrinkleParams& params) {
    if (params.intensity < 1 || params.intensity > 100) {
        return 0;
    }
    const i32 chance = params.intensity * 5;
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        Wrinkles wrinkles(run.source, params.fillColor);
        if (!wrinkles) {
            run.CopyHead(); // a black picture rather than none
            ClearPixels(run);
            return WorkEnd::Done;
        }
        wrinkles.ShiftColumns(chance);
        run.CopyHead();
        RandomWalk rowWalk(chance);
        return WithPixelBytes(run.source, [&](auto bytes) {
            return run.ForEachRow(
                [&](const u8*, u8* to, i32 y) { wrinkles.WriteRow<bytes>(y, rowWalk.Step(), to); });
        });
    });
}

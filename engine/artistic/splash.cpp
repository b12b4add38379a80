// Takes each pixel from a random place near it.
#include "engine/artistic/artistic_kernels.h"
#include "engine/artistic/fetch_row.h"
#include "engine/vector/random_draws.h"

namespace {

constexpr std::size_t kLargestSpread = 51;

// The distances that a row's pixels come from, drawn some pixels ahead: to the side, then up.
class Distances {
public:
    Distances(std::size_t pixels, i32 spread) : left_(pixels), spread_(spread) {}

    // Those of the next pixel, 0 to spread - 1.
    const u16* Next() {
        if (at_ == count_) {
            count_ = std::min(kDraws, 2 * left_);
            left_ -= count_ / 2;
            at_ = 0;
            TakeRandom(draws_, count_);
            TakeRemainders(draws_, count_, static_cast<u16>(spread_));
        }
        at_ += 2;
        return draws_ + at_ - 2;
    }

private:
    static constexpr std::size_t kDraws = 1024;

    std::size_t left_;
    const i32 spread_;
    u16 draws_[kDraws];
    std::size_t count_ = 0;
    std::size_t at_ = 0;
};

} // namespace

DibHandle Splash(DibHandle source, i32 intensity) {
    const i32 spread = std::clamp(intensity / 2, 1, 50) + 1;
    const i32 centre = spread / 2; // with an even spread pixels lean one step to the top right
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        const DibView& picture = run.source;
        return WithPixelBytes(picture, [&](auto bytes) {
            return run.ForEachRow([&](const u8*, u8* to, i32 y) {
                std::ptrdiff_t rows[kLargestSpread];
                for (i32 up = 0; up < spread; ++up) {
                    rows[up] = NearestRow(picture, i64{y} + centre - up);
                }
                Distances distances(static_cast<std::size_t>(picture.width), spread);
                FetchRow<bytes>(picture, to, [&](i32 x) {
                    const u16* distance = distances.Next();
                    return rows[distance[1]] +
                           NearestColumn<bytes>(picture, i64{x} + centre - distance[0]);
                });
            });
        });
    });
}

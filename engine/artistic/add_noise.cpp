// Replaces `intensity` percent of the pixels, picked at random, by random ones.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"
#include "engine/vector/random_draws.h"

namespace {

// Numbers of the stream that are looked at ahead of their use. A pixel uses one, which decides
// whether it is replaced, and if so one more for each of its bytes.
class NumbersAhead {
public:
    explicit NumbersAhead(i32 intensity) : intensity_(intensity) {}

    // Makes numbers for at least one pixel, at most `most`, from where the stream stands.
    void Look(std::size_t most) {
        count_ = std::min(kCount, most);
        PeekRandom(decisions_, count_);
        for (std::size_t i = 0; i < count_; ++i) {
            bytes_[i] = static_cast<u8>(decisions_[i]);
        }
        TakeRemainders(decisions_, count_, 100);
        used_ = 0;
    }
    bool HasPixel() const { return used_ + kMostPerPixel <= count_; }
    void PassOverUsed() const { SkipRandom(used_); }

    // Writes the next pixel, a random one or `kept`. The choice is no branch, which would be
    // guessed wrong too often.
    template <std::size_t bytes>
    void Next(const u8* kept, u8* pixel) {
        const u32 replaced = decisions_[used_] < intensity_ ? 1 : 0;
        const u8* const random = bytes_ + used_ + 1;
        const u32 mask = 0 - replaced;
        for (std::size_t i = 0; i < bytes; ++i) {
            pixel[i] = static_cast<u8>(kept[i] ^ ((kept[i] ^ random[i]) & mask));
        }
        used_ += 1 + replaced * bytes;
    }

    static constexpr std::size_t kMostPerPixel = 4;

private:
    static constexpr std::size_t kCount = 2048;

    const i32 intensity_;
    u16 decisions_[kCount];
    u8 bytes_[kCount];
    std::size_t count_ = 0;
    std::size_t used_ = 0;
};

} // namespace

DibHandle AddNoise(DibHandle source, i32 intensity) {
    if (intensity < 1 || intensity > 100) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        NumbersAhead numbers(intensity);
        return WithPixelBytes(run.source, [&](auto bytes) {
            return run.ForEachRow([&](const u8* from, u8* to) {
                for (auto left = static_cast<std::size_t>(run.source.width); left != 0;) {
                    numbers.Look(left * NumbersAhead::kMostPerPixel);
                    for (; left != 0 && numbers.HasPixel(); --left, from += bytes, to += bytes) {
                        numbers.Next<bytes>(from, to);
                    }
                    numbers.PassOverUsed();
                }
            });
        });
    });
}

// Replaces `intensity` percent of the pixels, picked at random, by random ones.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"
#include "engine/vector/random_draws.h"

#include <cstring>

namespace {

// Numbers of the stream that are looked at ahead of their use. A pixel uses one, which decides
// whether it is replaced, and if so one more for each of its bytes.
class NumbersAhead {
public:
    explicit NumbersAhead(i32 intensity) : intensity_(static_cast<u16>(intensity)) {}

    // Makes numbers for at least one pixel, at most `most`, from where the stream stands.
    void Look(std::size_t most) {
        u16 numbers[kCount];
        count_ = std::min(kCount, most);
        PeekRandom(numbers, count_);
        for (std::size_t i = 0; i < count_; ++i) {
            bytes_[i] = static_cast<u8>(numbers[i]);
        }
        TakeRemainders(numbers, count_, 100);
        MarkBelow(numbers, count_, intensity_, replacing_);
        used_ = 0;
    }
    bool HasPixels(std::size_t pixels) const { return used_ + pixels * kMostPerPixel <= count_; }
    void PassOverUsed() const { SkipRandom(used_); }

    // Writes the next pixel, a random one or `kept`.
    template <std::size_t bytes>
    void Next(const u8* kept, u8* pixel) {
        const auto replaced = static_cast<std::size_t>(Replacing() & 1);
        Choose<bytes>(replaced, kept, bytes_ + used_ + 1, pixel);
        used_ += 1 + replaced * bytes;
    }

    // The same for kGroup pixels. One of three bytes spoils the byte behind it.
    template <std::size_t bytes>
    void NextGroup(const u8* kept, u8* pixels) {
        u64 replacing = Replacing();
        const u8* random = bytes_ + used_ + 1;
        for (std::size_t i = 0; i < kGroup; ++i) {
            const auto replaced = static_cast<std::size_t>(replacing & 1);
            Choose<bytes == 3 ? 4 : 1>(replaced, kept + i * bytes, random, pixels + i * bytes);
            random += 1 + replaced * bytes;
            replacing >>= 1 + replaced * bytes;
        }
        used_ = static_cast<std::size_t>(random - bytes_) - 1;
    }

    static constexpr std::size_t kMostPerPixel = 4;
    static constexpr std::size_t kGroup = 14; // whose numbers are 56 at most

private:
    static constexpr std::size_t kCount = 2048;
    static constexpr std::size_t kBehind = 8; // loads may run over the end

    // The decisions from the next one on, at least 57 of them.
    u64 Replacing() const {
        u64 bits;
        std::memcpy(&bits, replacing_ + used_ / 8, sizeof bits);
        return bits >> used_ % 8;
    }

    // No branch, which would be guessed wrong too often.
    template <std::size_t bytes>
    static void Choose(std::size_t replaced, const u8* kept, const u8* random, u8* pixel) {
        u32 old = 0;
        u32 other = 0;
        std::memcpy(&old, kept, bytes);
        std::memcpy(&other, random, bytes);
        const u32 mask = 0 - static_cast<u32>(replaced);
        const u32 chosen = old ^ ((old ^ other) & mask);
        std::memcpy(pixel, &chosen, bytes);
    }

    const u16 intensity_;
    u8 replacing_[kCount / 8 + kBehind] = {};
    u8 bytes_[kCount + kBehind] = {};
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
                    constexpr std::size_t kGroup = NumbersAhead::kGroup;
                    for (; left > kGroup && numbers.HasPixels(kGroup); left -= kGroup) {
                        numbers.NextGroup<bytes>(from, to);
                        from += kGroup * bytes;
                        to += kGroup * bytes;
                    }
                    for (; left != 0 && numbers.HasPixels(1); --left, from += bytes, to += bytes) {
                        numbers.Next<bytes>(from, to);
                    }
                    numbers.PassOverUsed();
                }
            });
        });
    });
}

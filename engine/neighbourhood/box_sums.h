// The box that all averaging kernels share: the sum of a window that slides along a line, and the
// mean that it makes.
#pragma once

#include "engine/neighbourhood/extended_line.h"

// Divides sums of `divisor` bytes, rounding to nearest and halves up.
class RoundedMean {
public:
    explicit RoundedMean(u64 divisor);

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(table_); }

    void Divide(const u64* sums, std::size_t count, u8* means) const;

private:
    u8 Quotient(u64 sum) const { return static_cast<u8>((sum + divisor_ / 2) / divisor_); }
    bool IsTabled() const;

    const u64 divisor_;
    BlockTable<u8> table_;
};

// The window of `size` positions at p begins at p - size / 2; beyond an end of the line it goes on
// with that end. The cost of a line does not depend on `size`, which may be larger than the line.
class BoxSums {
public:
    BoxSums(const DibView& source, i32 size);

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(copy_); }

    // Calls `use(position, sums)` for each position of the line in turn, with one sum for each of
    // its samples. The line may be overwritten on the way.
    template <class Use>
    void Slide(const Line& line, const Use& use) {
        Begin(line);
        for (i32 position = 0; position < line.count; ++position) {
            use(position, sums_.data());
            Move(position);
        }
    }

private:
    const u8* At(i64 position) const {
        return samples_ + static_cast<std::size_t>(std::clamp<i64>(position, 0, last_)) * pitch_;
    }
    void Begin(const Line& line);
    void Add(i64 position, u64 times);
    // From the window at `position` to the next one.
    void Move(i64 position) {
        const u8* entering = At(position - half_ + size_);
        const u8* leaving = At(position - half_);
        for (std::size_t i = 0; i < pitch_; ++i) {
            sums_[i] += u64{entering[i]} - leaving[i];
        }
    }

    const i64 size_;
    const i64 half_;
    ExtendedLine copy_;
    const u8* samples_ = nullptr;
    std::size_t pitch_ = 0;
    i64 last_ = 0;
    std::array<u64, kMostSamples> sums_{};
};

// Writes the means of the windows of every position.
void AverageLine(BoxSums& box, const RoundedMean& mean, const Line& line);

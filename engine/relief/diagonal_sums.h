// Sliding sums along the diagonals of a picture.
#pragma once

#include "engine/block.h"
#include "engine/relief/motion_runs.h"

// The sums of the runs that start in one row of a picture, one for each of the row's bytes. From
// row to row each slides along its diagonal: the pixel that it started at leaves and the one behind
// its end enters. At the two edges that runs lead to they are as long as there are pixels.
class DiagonalSums {
public:
    DiagonalSums(const KernelRun& run, Step step, i32 runLength);

    // False when memory was short.
    explicit operator bool() const { return table_ && otherTable_; }

    // Writes the means of the row with this number; to be called for all rows in walked order.
    void WriteRow(i32 index);

private:
    std::size_t Bytes(i32 pixels) const { return static_cast<std::size_t>(pixels) * bytes_; }
    std::size_t OffsetOf(i32 column) const;
    void Enter(const u8* row, i32 steps);
    void SlideTo(i32 index);
    void BeginFirstRun(i32 index);
    void WriteMeans(u8* to, i32 longest) const;

    const WalkedRows rows_;
    const i32 width_;
    const i32 height_;
    const std::size_t rowBytes_;
    const std::size_t bytes_;
    const bool rightward_;
    const i32 runLength_;
    const BlockTable<u16> table_;
    const BlockTable<u16> otherTable_;
    u16* sums_;
    u16* next_;
};

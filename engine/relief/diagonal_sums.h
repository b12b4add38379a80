// Sliding sums along the diagonals of a picture.
#pragma once

#include "engine/block.h"
#include "engine/relief/motion_runs.h"
#include "engine/vector/box_rows.h"

// The sums of the runs that start in one row of a picture, one for each of the row's bytes. From
// row to row each slides along its diagonal: the pixel that it started at leaves and the one behind
// its end enters. The sums of a diagonal stay at one place of the table, so that those of a row
// begin one pixel further on, or back, than those of the row before. At the two edges that runs
// lead to they are as long as there are pixels.
class DiagonalSums {
public:
    DiagonalSums(const KernelRun& run, Step step, i32 runLength);

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(table_); }

    // Writes the means of the row with this number; to be called for all rows in walked order.
    void WriteRow(i32 index);

private:
    std::size_t Bytes(i32 pixels) const { return static_cast<std::size_t>(pixels) * pixel_; }
    std::size_t OffsetOf(i32 column) const;
    void Enter(const u8* row, i32 steps);
    void SlideFullRow(i32 index);
    void SlideLastRow(i32 index);
    void Leave(const u8* leaving, i32 column);
    void BeginFirstRun(i32 index, i32 count);
    void WriteMean(u8* to, i32 column, i32 count) const;
    void WriteMeans(u8* to, i32 longest) const;
    void WriteCutMeans(u8* to, i32 longest) const;

    const WalkedRows rows_;
    const i32 width_;
    const i32 height_;
    const std::size_t rowBytes_;
    const std::size_t pixel_;
    const bool rightward_;
    const i32 runLength_;
    const RoundedDivision mean_;
    const BlockTable<u16> table_;
    u16* sums_;
};

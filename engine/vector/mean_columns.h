// Means along columns: windows of one row after the other, which slide over the rows.
#pragma once

#include "engine/row_table.h"
#include "engine/vector/box_rows.h"

// The sums of `count` columns of up to 128 samples each.
class ColumnSums {
public:
    explicit ColumnSums(std::size_t count) : rows_(2, count + kBeyond) {}

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(rows_); }
    u16* Even() const { return rows_.Row(0); }
    u16* Odd() const { return rows_.Row(1); }

private:
    static constexpr std::size_t kBeyond = 64; // vectors may end beyond the last sum

    const RowTable<u16> rows_; // the planes of the sums at even and at odd places
};

// What happens to the sums for one row of the result.
struct ColumnStep {
    const ColumnSums& sums;
    const u8* entering;
    const u8* leaving;
    std::size_t count;
};

// Adds a row to each sum `times` times.
void AddToColumns(const u8* row, i32 times, const ColumnSums& sums, std::size_t count);

// Slides the windows on and writes their means.
void WriteMeans(const ColumnStep& step, const RoundedDivision& division, u8* to);

// The same with `weight` times each centre among the samples.
void WriteWeightedMeans(const ColumnStep& step, const u8* centres, i32 weight,
                        const RoundedDivision& division, u8* to);

// What a difference from the mean adds to a sample: `percent` of it, 1 to 500, rounded, but nothing
// below the threshold.
struct DifferenceGain {
    i32 percent;
    i32 threshold;
};

// Slides the windows on and moves each sample away from its mean. One that equals it becomes
// lighter; darkening sets in one step later than lightening.
void WriteSharpened(const ColumnStep& step, const u8* samples, const DifferenceGain& gain,
                    const RoundedDivision& division, u8* to);

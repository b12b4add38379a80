#include "engine/relief/diagonal_sums.h"

#include "engine/pixel.h"

DiagonalSums::DiagonalSums(const KernelRun& run, Step step, i32 runLength)
    : rows_(run, step.y), width_(run.source.width), height_(run.source.height),
      rowBytes_(run.source.rowBytes), pixel_(PixelBytes(run.source)), rightward_(step.x > 0),
      runLength_(runLength), mean_(RoundedDivision::Down(runLength)),
      table_(rowBytes_ + Bytes(height_)), sums_(table_.Entries()) {
    if (table_ && rightward_) {
        sums_ += Bytes(height_);
    }
}

void DiagonalSums::WriteRow(i32 index) {
    if (runLength_ == 1) {
        std::memcpy(rows_.To(index), rows_.From(index), rowBytes_);
    } else if (index == 0) {
        for (i32 k = 0; k < runLength_; ++k) {
            Enter(rows_.From(k), k);
        }
        WriteMeans(rows_.To(0), runLength_);
    } else if (index <= height_ - runLength_) {
        SlideFullRow(index);
    } else {
        SlideLastRow(index);
    }
}

// Columns are counted in the direction of the runs.
std::size_t DiagonalSums::OffsetOf(i32 column) const {
    return Bytes(rightward_ ? column : width_ - 1 - column);
}

// Adds to each sum the pixel that is `steps` steps away in `row`, where the row has one.
void DiagonalSums::Enter(const u8* row, i32 steps) {
    const std::size_t reach = Bytes(steps);
    const u8* from = rightward_ ? row + reach : row;
    AddToSums(from, rightward_ ? sums_ : sums_ + reach, rowBytes_ - reach);
}

void DiagonalSums::SlideFullRow(i32 index) {
    const u8* leaving = rows_.From(index - 1);
    const u8* entering = rows_.From(index + runLength_ - 1);
    u8* to = rows_.To(index);
    const std::size_t slid = Bytes(width_ - runLength_);
    const std::size_t cut = Bytes(runLength_ - 1);
    if (rightward_) {
        sums_ -= pixel_;
        SlideToMeans({sums_ + pixel_, entering + cut + pixel_, leaving, slid}, mean_, to + pixel_);
    } else {
        sums_ += pixel_;
        SlideToMeans({sums_ + cut, entering, leaving + cut + pixel_, slid}, mean_, to + cut);
    }
    for (i32 count = 1; count < runLength_; ++count) {
        Leave(leaving, width_ - count);
    }
    BeginFirstRun(index, runLength_);
    WriteMean(to, 0, runLength_);
    WriteCutMeans(to, runLength_);
}

// The last rows, where no pixel enters.
void DiagonalSums::SlideLastRow(i32 index) {
    const i32 longest = height_ - index;
    sums_ +=
        rightward_ ? -static_cast<std::ptrdiff_t>(pixel_) : static_cast<std::ptrdiff_t>(pixel_);
    for (i32 column = 1; column < width_; ++column) {
        Leave(rows_.From(index - 1), column);
    }
    BeginFirstRun(index, longest);
    WriteMeans(rows_.To(index), longest);
}

// The pixel that leaves a run belongs to the row before, and stands one step back.
void DiagonalSums::Leave(const u8* leaving, i32 column) {
    u16* sum = sums_ + OffsetOf(column);
    const u8* pixel = leaving + OffsetOf(column - 1);
    for (std::size_t channel = 0; channel < pixel_; ++channel) {
        sum[channel] = static_cast<u16>(sum[channel] - pixel[channel]);
    }
}

// The run of the first column has no forerunner: it is added up afresh.
void DiagonalSums::BeginFirstRun(i32 index, i32 count) {
    u16* sum = sums_ + OffsetOf(0);
    std::fill_n(sum, pixel_, u16{0});
    for (i32 k = 0; k < count; ++k) {
        const u8* pixel = rows_.From(index + k) + OffsetOf(k);
        for (std::size_t channel = 0; channel < pixel_; ++channel) {
            sum[channel] = static_cast<u16>(sum[channel] + pixel[channel]);
        }
    }
}

void DiagonalSums::WriteMean(u8* to, i32 column, i32 count) const {
    const std::size_t offset = OffsetOf(column);
    for (std::size_t i = offset; i < offset + pixel_; ++i) {
        to[i] = MeanOfRun(sums_[i], count);
    }
}

// In this row runs have `longest` pixels, or as many as there are up to the edge.
void DiagonalSums::WriteMeans(u8* to, i32 longest) const {
    for (i32 column = 0; column <= width_ - longest; ++column) {
        WriteMean(to, column, longest);
    }
    WriteCutMeans(to, longest);
}

void DiagonalSums::WriteCutMeans(u8* to, i32 longest) const {
    for (i32 count = 1; count < longest; ++count) {
        WriteMean(to, width_ - count, count);
    }
}

#include "engine/relief/diagonal_sums.h"

#include "engine/pixel.h"

DiagonalSums::DiagonalSums(const KernelRun& run, Step step, i32 runLength)
    : rows_(run, step.y), width_(run.source.width), height_(run.source.height),
      rowBytes_(run.source.rowBytes), bytes_(PixelBytes(run.source)), rightward_(step.x > 0),
      runLength_(runLength), table_(rowBytes_), otherTable_(rowBytes_), sums_(table_.Entries()),
      next_(otherTable_.Entries()) {}

void DiagonalSums::WriteRow(i32 index) {
    if (index == 0) {
        for (i32 k = 0; k < runLength_; ++k) {
            Enter(rows_.From(k), k);
        }
    } else {
        SlideTo(index);
    }
    WriteMeans(rows_.To(index), std::min(runLength_, height_ - index));
}

// Columns are counted in the direction of the runs.
std::size_t DiagonalSums::OffsetOf(i32 column) const {
    return Bytes(rightward_ ? column : width_ - 1 - column);
}

// Adds to each sum the pixel that is `steps` steps away in `row`, where the row has one.
void DiagonalSums::Enter(const u8* row, i32 steps) {
    const std::size_t reach = Bytes(steps);
    const u8* from = rightward_ ? row + reach : row;
    u16* to = rightward_ ? sums_ : sums_ + reach;
    for (std::size_t i = 0; i < rowBytes_ - reach; ++i) {
        to[i] = static_cast<u16>(to[i] + from[i]);
    }
}

void DiagonalSums::SlideTo(i32 index) {
    const u8* leaves = rows_.From(index - 1);
    const std::size_t from = rightward_ ? 0 : bytes_;
    const std::size_t to = rightward_ ? bytes_ : 0;
    for (std::size_t i = 0; i < rowBytes_ - bytes_; ++i) {
        next_[to + i] = static_cast<u16>(sums_[from + i] - leaves[from + i]);
    }
    std::swap(sums_, next_);
    BeginFirstRun(index);
    if (index <= height_ - runLength_) {
        Enter(rows_.From(index + runLength_ - 1), runLength_ - 1);
    }
}

// The run of the first column has no forerunner: it is added up afresh, but for its last pixel.
void DiagonalSums::BeginFirstRun(i32 index) {
    u16* sum = sums_ + OffsetOf(0);
    std::fill_n(sum, bytes_, u16{0});
    const i32 steps = std::min(runLength_ - 1, height_ - index);
    for (i32 k = 0; k < steps; ++k) {
        const u8* pixel = rows_.From(index + k) + OffsetOf(k);
        for (std::size_t channel = 0; channel < bytes_; ++channel) {
            sum[channel] = static_cast<u16>(sum[channel] + pixel[channel]);
        }
    }
}

// In this row runs have `longest` pixels, or as many as there are up to the edge.
void DiagonalSums::WriteMeans(u8* to, i32 longest) const {
    const Mean mean(longest);
    const std::size_t cutBytes = Bytes(longest - 1);
    const std::size_t begin = rightward_ ? 0 : cutBytes;
    for (std::size_t i = begin; i < begin + rowBytes_ - cutBytes; ++i) {
        to[i] = mean(sums_[i]);
    }
    for (i32 count = 1; count < longest; ++count) {
        const Mean cutMean(count);
        const std::size_t offset = OffsetOf(width_ - count);
        for (std::size_t i = offset; i < offset + bytes_; ++i) {
            to[i] = cutMean(sums_[i]);
        }
    }
}

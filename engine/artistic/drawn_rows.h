// The pixels that melting draws, and the questions that belong to them.
#pragma once

#include "engine/frame.h"

#include <cstddef>

// The question before each of `count` draws, asked along with the work, which goes otherwise.
class MeltingQuestions {
public:
    MeltingQuestions(const KernelRun& run, i64 count) : run_(run), count_(count) {}

    // Those that were answered with no.
    i64 Asked() const { return asked_; }

    // Before piece `index` of the `pieces` of drawing, and after `sunk` of the `count` draws of a
    // column. False when the run is to stop.
    bool AskForDrawing(i64 index, i64 pieces) { return AskUpTo(WhileDrawing() * index / pieces); }
    bool AskForColumn(i64 x, i64 width, i64 sunk, i64 count) {
        const i64 rest = count_ - WhileDrawing();
        const i64 ofColumn = count == 0 ? 0 : rest / width * sunk / count;
        return AskUpTo(WhileDrawing() + rest * x / width + ofColumn);
    }
    bool AskAll() { return AskUpTo(count_); }

private:
    i64 WhileDrawing() const { return count_ / 4; }
    bool AskUpTo(i64 due);

    const KernelRun& run_;
    const i64 count_;
    i64 asked_ = 0;
};

// The rows of the drawn pixels, column by column, each column's in the order in which they are
// drawn. The random numbers are only looked at.
class DrawnRows {
public:
    DrawnRows(const DibView& picture, i64 count);
    explicit operator bool() const { return ends_ && rows_; }

    // False when the run is to stop.
    bool Draw(MeltingQuestions& questions);

    const u16* Of(std::size_t x) const { return rows_.Entries() + (x < columns_ ? Begin(x) : 0); }
    std::size_t CountOf(std::size_t x) const { return x < columns_ ? ends_[x] - Begin(x) : 0; }

private:
    std::size_t Begin(std::size_t x) const { return x == 0 ? 0 : ends_[x - 1]; }

    const i32 width_;
    const i32 height_;
    const std::size_t count_;
    const std::size_t columns_; // in which pixels may be drawn
    const BlockTable<std::size_t> ends_;
    const BlockTable<u16> rows_;
};

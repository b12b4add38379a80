// The rows around one, each with its ends repeated, so that a square window lies inside them.
#pragma once

#include "engine/neighbourhood/extended_row.h"
#include "engine/row_table.h"

// The window of 2 * reach + 1 rows; each row has its first pixel `reach` times more in front and
// its last one as often behind. Beyond the edges the edge rows repeat.
class ExtendedRows {
public:
    ExtendedRows(const DibView& source, i32 reach)
        : source_(source), reach_(reach), pixel_(PixelBytes(source)),
          rows_(static_cast<u64>(Side()),
                source.rowBytes + 2 * static_cast<std::size_t>(reach) * pixel_) {}

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(rows_); }

    // Makes the window around row y ready; to be called for each y in turn.
    void MoveTo(i64 y) {
        for (; next_ < source_.height && next_ <= y + reach_; ++next_) {
            const auto reach = static_cast<std::size_t>(reach_);
            ExtendRow(source_.Row(static_cast<i32>(next_)), source_.rowBytes, pixel_, reach, reach,
                      Slot(next_));
        }
    }

    const u8* Row(i64 y) const { return Slot(std::clamp<i64>(y, 0, source_.height - 1)); }

private:
    i64 Side() const { return 2 * i64{reach_} + 1; }
    u8* Slot(i64 y) const { return rows_.Row(static_cast<std::size_t>(y % Side())); }

    const DibView& source_;
    const i32 reach_;
    const std::size_t pixel_;
    const RowTable<u8> rows_;
    i64 next_ = 0;
};

// A row with its ends repeated outwards, so that every window lies inside it.
#pragma once

#include "engine/block.h"
#include "engine/pixel.h"

// The window of `size` positions at p begins at p - size / 2: one of even size leans low. What of
// it lies beyond an end of the row is that end, again and again. The window of a row's byte i
// begins at byte i of the extended row.
class ExtendedRow {
public:
    ExtendedRow(const DibView& source, i32 size);

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(buffer_); }

    // Extends a row; what the last one gave is gone.
    const u8* Extend(const u8* row) const;

private:
    const std::size_t rowBytes_;
    const std::size_t pixel_;
    const std::size_t before_;
    const std::size_t behind_;
    const BlockTable<u8> buffer_;
};

// Writes a row's bytes, its first pixel `before` times in front and its last one `behind` times
// behind.
void ExtendRow(const u8* row, std::size_t rowBytes, std::size_t pixel, std::size_t before,
               std::size_t behind, u8* to);

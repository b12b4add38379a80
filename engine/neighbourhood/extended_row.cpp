#include "engine/neighbourhood/extended_row.h"

#include <cstring>

ExtendedRow::ExtendedRow(const DibView& source, i32 size)
    : rowBytes_(source.rowBytes), pixel_(PixelBytes(source)),
      before_(static_cast<std::size_t>(size) / 2),
      behind_(static_cast<std::size_t>(size) - 1 - before_),
      buffer_(u64{rowBytes_} + static_cast<u64>(size - 1) * pixel_) {}

const u8* ExtendedRow::Extend(const u8* row) const {
    ExtendRow(row, rowBytes_, pixel_, before_, behind_, buffer_.Entries());
    return buffer_.Entries();
}

void ExtendRow(const u8* row, std::size_t rowBytes, std::size_t pixel, std::size_t before,
               std::size_t behind, u8* to) {
    for (std::size_t i = 0; i < before; ++i, to += pixel) {
        std::memcpy(to, row, pixel);
    }
    std::memcpy(to, row, rowBytes);
    to += rowBytes;
    for (std::size_t i = 0; i < behind; ++i, to += pixel) {
        std::memcpy(to, row + rowBytes - pixel, pixel);
    }
}

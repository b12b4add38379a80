#include "engine/neighbourhood/extended_line.h"

namespace {

u64 LongestLine(const DibView& source, u64 size) {
    const u64 row = static_cast<u64>(source.width) + size - 1;
    const u64 strip =
        (static_cast<u64>(source.height) + size - 1) * static_cast<u64>(StripColumns(source));
    return std::max(row, strip) * PixelBytes(source);
}

} // namespace

void CopyExtended(const Line& line, std::size_t size, u8* to) {
    const auto append = [&](const u8* from, std::size_t bytes) {
        std::memcpy(to, from, bytes);
        to += bytes;
    };
    const auto count = static_cast<std::size_t>(line.count);
    const std::size_t before = size / 2;
    for (std::size_t i = 0; i < before; ++i) {
        append(line.from, line.samples);
    }
    if (line.step == line.samples) {
        append(line.from, count * line.samples);
    } else {
        for (std::size_t position = 0; position < count; ++position) {
            append(line.from + position * line.step, line.samples);
        }
    }
    for (std::size_t i = before + 1; i < size; ++i) {
        append(line.from + (count - 1) * line.step, line.samples);
    }
}

ExtendedLine::ExtendedLine(const DibView& source, i32 size)
    : size_(static_cast<std::size_t>(size)), buffer_(LongestLine(source, size_)) {}

void ExtendedLine::Load(const Line& line) {
    CopyExtended(line, size_, buffer_.Entries());
}

void ExtendedLine::Store(const Line& line) const {
    const auto count = static_cast<std::size_t>(line.count);
    const u8* from = buffer_.Entries();
    if (line.step == line.samples) {
        std::memcpy(line.to, from, count * line.samples);
        return;
    }
    for (std::size_t position = 0; position < count; ++position) {
        std::memcpy(line.to + position * line.step, from + position * line.samples, line.samples);
    }
}

// Reads little-endian values from bytes that nobody vouches for.
#pragma once

#include "platform/types.h"

#include <algorithm>
#include <span>
#include <string>

// A read beyond the end gives zeros and is remembered, so that a caller may ask once, at the end.
class ByteReader {
public:
    explicit ByteReader(std::span<const u8> bytes) : bytes_(bytes) {}

    bool Failed() const { return failed_; }
    std::size_t Offset() const { return offset_; }

    std::span<const u8> Take(u64 count) {
        if (count > bytes_.size() - offset_) {
            failed_ = true;
            offset_ = bytes_.size();
            return {};
        }
        const auto taken = bytes_.subspan(offset_, static_cast<std::size_t>(count));
        offset_ += taken.size();
        return taken;
    }

    u16 U16() {
        const auto word = Take(2);
        return word.empty() ? u16{0} : static_cast<u16>(word[0] | word[1] << 8);
    }

    u32 U32() {
        const u32 low = U16();
        return low | static_cast<u32>(U16()) << 16;
    }

    i16 I16() { return static_cast<i16>(U16()); }
    i32 I32() { return static_cast<i32>(U32()); }

    // Skips to a multiple of 4 bytes from the start; the end of the bytes will do.
    void Align4() { Take(std::min((4 - offset_ % 4) % 4, bytes_.size() - offset_)); }

    // `length` UTF-16 units as Latin-1; what Latin-1 lacks becomes a question mark.
    std::string Text(std::size_t length) {
        std::string text;
        while (text.size() < length && !failed_) {
            const u16 unit = U16();
            text.push_back(unit < 256 ? static_cast<char>(unit) : '?');
        }
        return text;
    }

    // The same up to a unit of 0, which is read too.
    std::string TerminatedText() {
        std::string text;
        for (u16 unit = U16(); unit != 0; unit = U16()) {
            text.push_back(unit < 256 ? static_cast<char>(unit) : '?');
        }
        return text;
    }

    // Whether the next unit is the mark in front of a number where a text may stand; skips it.
    bool SkipOrdinalMark() {
        const ByteReader before = *this;
        if (U16() == 0xFFFF) {
            return true;
        }
        *this = before;
        return false;
    }

private:
    std::span<const u8> bytes_;
    std::size_t offset_ = 0;
    bool failed_ = false;
};

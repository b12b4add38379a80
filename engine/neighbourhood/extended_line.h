// A line with its ends repeated outwards, so that every window lies inside it.
#pragma once

#include "engine/block.h"
#include "engine/neighbourhood/old_two_pass.h"

#include <algorithm>
#include <array>
#include <cstring>

// Copies a line without gaps, with its first position `size / 2` times more in front and the last
// one as often behind as makes `size - 1` in all.
void CopyExtended(const Line& line, std::size_t size, u8* to);

// The window of `size` positions at p begins at p - size / 2: one of even size leans low. What of
// it lies beyond an end of the line is that end, again and again.
//
// The positions stand without gaps. The window of sample i, as counted in the line, begins at
// sample i of the extended one and goes on in steps of `samples`.
class ExtendedLine {
public:
    // Room for every line of a two-pass filter.
    ExtendedLine(const DibView& source, i32 size);

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(buffer_); }

    void Load(const Line& line);
    const u8* Samples() const { return buffer_.Entries(); }

    // Replaces the first `count` samples by what `rule(from, to, n)` makes of them and those behind
    // them: n samples at `to` from windows that begin at `from`.
    template <class Rule>
    void Rewrite(std::size_t count, const Rule& rule) {
        std::array<u8, kBlock> block;
        for (std::size_t done = 0; done < count; done += kBlock) {
            const std::size_t n = std::min(kBlock, count - done);
            u8* samples = buffer_.Entries() + done;
            rule(samples, block.data(), n);
            std::memcpy(samples, block.data(), n);
        }
    }

    // Writes the first positions back as the line's result.
    void Store(const Line& line) const;

    static constexpr std::size_t kBlock = 1024;

private:
    const std::size_t size_;
    BlockTable<u8> buffer_;
};

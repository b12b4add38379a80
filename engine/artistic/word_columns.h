// Pictures column by column in memory, each pixel as one number that compares like its tone.
#pragma once

#include "engine/frame.h"

#include <algorithm>

// Colour pixels: the sum of the channels above two of them.
struct ColourWord {
    using Word = i32;
    static constexpr std::size_t kBytes = 3;

    static Word Of(const u8* pixel) {
        return (pixel[0] + pixel[1] + pixel[2]) << 16 | pixel[1] << 8 | pixel[2];
    }
    static void Write(Word word, u8* pixel) {
        const i32 second = word >> 8 & 0xFF;
        const i32 third = word & 0xFF;
        pixel[0] = static_cast<u8>((word >> 16) - second - third);
        pixel[1] = static_cast<u8>(second);
        pixel[2] = static_cast<u8>(third);
    }
    // The least word of the same tone.
    static Word Least(Word word) { return word & ~0xFFFF; }
};

struct GreyWord {
    using Word = u8;
    static constexpr std::size_t kBytes = 1;

    static Word Of(const u8* pixel) { return *pixel; }
    static void Write(Word word, u8* pixel) { *pixel = word; }
    static Word Least(Word word) { return word; }
};

// The words of a column with room behind them: long columns begin an odd number of cache lines
// apart, so that a row's pixels do not all want the same place in the cache.
template <class Word>
std::size_t ColumnWords(i32 height) {
    constexpr std::size_t kLine = 64 / sizeof(Word);
    constexpr std::size_t kLong = 16 * kLine;
    const auto words = static_cast<std::size_t>(height);
    return words < kLong ? words : ((words / kLine + 1) | 1) * kLine;
}

template <class Format>
struct WordColumns {
    using Word = typename Format::Word;

    Word* words;
    std::size_t each; // ColumnWords

    Word* Column(std::size_t x) const { return words + x * each; }
};

// Columns are filled and written in small blocks, so that both a row's pixels and a column's are
// still at hand when their neighbours come.
constexpr std::size_t kStripColumns = 32;
constexpr i32 kBlockRows = 32;

// Calls `visit(bottom, top)` for all rows in such pieces.
template <class Visit>
void ForEachBlock(i32 height, const Visit& visit) {
    for (i32 bottom = 0; bottom < height;) {
        const i32 top = bottom + std::min(kBlockRows, height - bottom);
        visit(bottom, top);
        bottom = top;
    }
}

// The strip of `count` columns from column `left` of the picture on.
template <class Format>
void FillColumns(const DibView& picture, std::size_t left, std::size_t count,
                 const WordColumns<Format>& columns) {
    ForEachBlock(picture.height, [&](i32 bottom, i32 top) {
        for (std::size_t x = 0; x < count; ++x) {
            typename Format::Word* const column = columns.Column(x);
            for (i32 y = bottom; y < top; ++y) {
                column[y] = Format::Of(picture.Row(y) + (left + x) * Format::kBytes);
            }
        }
    });
}

template <class Format>
void WriteColumns(const WordColumns<Format>& columns, const KernelRun& run, std::size_t left,
                  std::size_t count) {
    const std::size_t each = columns.each;
    ForEachBlock(run.source.height, [&](i32 bottom, i32 top) {
        for (i32 y = bottom; y < top; ++y) {
            u8* to = run.ResultRow(y) + left * Format::kBytes;
            const typename Format::Word* word = columns.words + y;
            for (const u8* const end = to + count * Format::kBytes; to != end;
                 to += Format::kBytes, word += each) {
                Format::Write(*word, to);
            }
        }
    });
}

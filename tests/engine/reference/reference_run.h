// One run of a reference kernel: the picture's bytes by coordinates, the result, and the questions,
// reports and random draws that the run makes.
#pragma once

#include "engine/dib_format.h"
#include "tests/support/engine_probe.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

using Pixel = std::array<i32, 3>;

inline i32 Clamp(i64 value, i64 low, i64 high) {
    return static_cast<i32>(std::clamp(value, low, high));
}
inline i32 ClampByte(i64 value) {
    return Clamp(value, 0, 255);
}

// Thrown by a question that is answered with yes.
struct Stopped {};

class ReferenceRun {
public:
    ReferenceRun(std::span<const u8> block, i64 stopAtQuestion, u32 randomState);

    std::span<const u8> block;
    DibHeader header;
    i32 w, h;
    ImageClass kind;
    i32 entries;          // of the palette, 0 at 24 bits
    i32 channels;         // bytes of a pixel at 24 bits, else 1
    std::size_t head = 0; // bytes in front of the pixels
    std::size_t stride = 0;
    std::vector<u8> result;
    std::vector<i32> trace;
    u32 randomState;

    bool IsPalette() const { return kind == ImageClass::Palette8 || kind == ImageClass::Palette4; }
    bool IsGreyOrColour() const { return kind == ImageClass::Grey || kind == ImageClass::Colour; }
    bool IsByteOrColour() const { return IsGreyOrColour() || kind == ImageClass::Palette8; }

    std::size_t Offset(i64 x, i64 y, i64 c) const {
        return head + static_cast<std::size_t>(y) * stride +
               static_cast<std::size_t>(x * channels + c);
    }
    i32 At(i64 x, i64 y, i32 c) const { return block[Offset(x, y, c)]; }
    // Positions outside count as the nearest one inside.
    i32 Near(i64 x, i64 y, i32 c) const { return At(Clamp(x, 0, w - 1), Clamp(y, 0, h - 1), c); }
    i32 Index(i32 x, i32 y) const; // of an 8-bit or 4-bit palette picture
    Pixel Entry(i32 index) const;  // black beyond the palette
    i32 Out(i64 x, i64 y, i32 c) const { return result[Offset(x, y, c)]; }
    void Put(i64 x, i64 y, i32 c, i64 value) { result[Offset(x, y, c)] = static_cast<u8>(value); }
    void CopyPixel(i32 x, i32 y, i64 fromX, i64 fromY) {
        for (i32 c = 0; c < channels; ++c) {
            Put(x, y, c, At(fromX, fromY, c));
        }
    }
    void CopyRowWhole(i32 y) {
        std::copy_n(&block[Offset(0, y, 0)], stride, &result[Offset(0, y, 0)]);
    }

    void Ask() {
        if (NoteQuestion()) {
            throw Stopped();
        }
    }
    void Report(i64 percent) { trace.push_back(static_cast<i32>(percent)); }
    // Before line i of n.
    void Line(i64 i, i64 n, i64 base = 0, i64 span = 100) {
        Ask();
        if (i % 16 == 0) {
            Report(base + i * span / n);
        }
    }
    i32 Draw();
    // Copies what stands in front of the pixels and asks the question that nobody heeds.
    void CopyHead();

    // All pixels in the usual rhythm.
    template <class Work>
    void EachPixel(Work work) {
        for (i32 y = 0; y < h; ++y) {
            Line(y, h);
            for (i32 x = 0; x < w; ++x) {
                work(x, y);
            }
        }
    }
    template <class Value>
    void EachSample(Value value) {
        EachPixel([&](i32 x, i32 y) {
            for (i32 c = 0; c < channels; ++c) {
                Put(x, y, c, value(x, y, c));
            }
        });
    }

    // Colour pixels or palette entries go through `colour`, grey pixels through `grey`. In palette
    // pictures only every `paletteRhythm`-th row asks.
    template <class Colour, class Grey>
    void MapTones(Colour colour, Grey grey, i32 paletteRhythm = 1, bool keepReserved = true) {
        CopyHead();
        for (i32 i = 0; IsPalette() && i < entries; ++i) {
            PutColour(&result[40 + static_cast<std::size_t>(i) * 4], colour(Entry(i)));
            result[43 + static_cast<std::size_t>(i) * 4] &= keepReserved ? 255 : 0;
        }
        for (i32 y = 0; y < h; ++y) {
            if (!IsPalette() || y % paletteRhythm == 0) {
                Line(y, h);
            }
            for (i32 x = 0; !IsPalette() && x < w; ++x) {
                if (kind == ImageClass::Grey) {
                    Put(x, y, 0, grey(At(x, y, 0)));
                } else {
                    PutColour(&result[Offset(x, y, 0)],
                              colour(Pixel{At(x, y, 0), At(x, y, 1), At(x, y, 2)}));
                }
            }
            if (IsPalette()) {
                CopyRowWhole(y);
            }
        }
    }
    static void PutColour(u8* bytes, const Pixel& pixel) {
        std::transform(pixel.begin(), pixel.end(), bytes,
                       [](i32 value) { return static_cast<u8>(value); });
    }

private:
    bool NoteQuestion() {
        trace.push_back(EngineProbe::kQuestion);
        return ++questions_ == stopAtQuestion_;
    }

    i64 questions_ = 0;
    const i64 stopAtQuestion_;
};

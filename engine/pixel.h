// Whole pixels of the pictures that most kernels take, 24 bits or 8-bit grey: one or three bytes
// that stay together.
#pragma once

#include "engine/frame.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <type_traits>

inline std::size_t PixelBytes(const DibView& source) {
    return source.bits / 8;
}

// Makes the whole result black, for a kernel that leaves pixels of it unwritten.
inline void ClearPixels(const KernelRun& run) {
    std::memset(run.ResultRow(0), 0, run.source.size - run.source.head);
}

// Calls `work` with the bytes of a pixel as a constant, so that its loops are made for one depth.
template <class Work>
decltype(auto) WithPixelBytes(const DibView& source, const Work& work) {
    return source.bits == 24 ? work(std::integral_constant<std::size_t, 3>{})
                             : work(std::integral_constant<std::size_t, 1>{});
}

template <std::size_t bytes>
inline void CopyPixel(const u8* from, u8* to) {
    std::memcpy(to, from, bytes);
}

template <class Value>
constexpr u8 ClampToByte(Value value) {
    return static_cast<u8>(std::clamp<Value>(value, 0, 255));
}

// A colour parameter (byte 0 red, 1 green, 2 blue) as the bytes of a pixel. On a grey picture its
// red is the tone.
using PixelColour = std::array<u8, 3>;

inline PixelColour PixelOfColour(u32 colour, const DibView& source) {
    const u8 red = static_cast<u8>(colour);
    const u8 green = static_cast<u8>(colour >> 8);
    const u8 blue = static_cast<u8>(colour >> 16);
    return source.bits == 24 ? PixelColour{blue, green, red} : PixelColour{red, red, red};
}

// Where in the source a pixel comes from; it may lie outside.
struct Place {
    i64 x;
    i64 y;
};

// Writes the pixels `begin` to `end` - 1 of a row of the result, from left to right: the one at x
// is the source's at place(x), or the nearest one of the picture.
template <class PlaceOf>
void FetchPixels(const DibView& source, u8* row, i32 begin, i32 end, const PlaceOf& place) {
    WithPixelBytes(source, [&](auto bytes) {
        const i64 right = source.width - 1;
        const i64 top = source.height - 1;
        u8* to = row + static_cast<std::size_t>(begin) * bytes;
        for (i32 x = begin; x < end; ++x, to += bytes) {
            const Place from = place(x);
            const auto column = static_cast<std::size_t>(std::clamp<i64>(from.x, 0, right));
            const auto line = static_cast<i32>(std::clamp<i64>(from.y, 0, top));
            CopyPixel<bytes>(source.Row(line) + column * bytes, to);
        }
    });
}

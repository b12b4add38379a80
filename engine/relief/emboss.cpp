// Turns the picture into a relief: the difference of two pixels along one of eight directions, over
// a background. A border as wide as their distance is background alone, on all four sides.
#include "engine/pixel.h"
#include "engine/relief/mean_slopes.h"
#include "engine/relief/relief_kernels.h"
#include "engine/vector/byte_rows.h"

namespace {

enum Mode : i32 { kOriginal = 1, kMidtone = 2, kGray = 3, kActive = 4 };

// The neighbour always lies to the side of higher rows, or of the right; the sign brings the bright
// rims to the side that the direction names.
struct Direction {
    i32 x;
    i32 y;
    i32 sign;
};

constexpr std::array<Direction, 8> kDirections{{
    {-1, 1, -1}, // top left
    {0, 1, -1},  // top
    {1, 1, -1},  // top right
    {1, 0, 1},   // left
    {1, 0, -1},  // right
    {1, 1, 1},   // bottom left
    {0, 1, 1},   // bottom
    {-1, 1, 1},  // bottom right
}};

struct Relief {
    std::ptrdiff_t neighbour; // bytes to the neighbour; the opposite one lies as far behind
    i32 sign;
    RowPattern ground;
    Stores stores;
};

// Of the two ends of a slope, the one that brightens and the one that darkens.
struct Slope {
    const u8* high;
    const u8* low;
};

Slope SlopeFrom(const u8* from, const u8* to, i32 sign) {
    return sign > 0 ? Slope{to, from} : Slope{from, to};
}

// Adds the relief to the picture.
template <std::size_t bytes>
void WriteOriginal(const u8* from, u8* to, std::size_t pixels, const Relief& relief) {
    const auto [high, low] =
        SlopeFrom(from - relief.neighbour, from + relief.neighbour, relief.sign);
    if constexpr (bytes == 3) {
        AddMeanSlopes(high, low, from, to, pixels);
    } else {
        for (std::size_t i = 0; i < pixels; ++i) {
            to[i] = ClampToByte(from[i] + high[i] - low[i]);
        }
    }
}

// A relief of each channel by itself.
template <std::size_t bytes>
void WriteChannels(const u8* from, u8* to, std::size_t pixels, const Relief& relief) {
    const auto [high, low] = SlopeFrom(from, from + relief.neighbour, relief.sign);
    AddDifference(high, low, to, pixels * bytes, relief.ground, relief.stores);
}

// A relief without colour.
template <std::size_t bytes>
void WriteGray(const u8* from, u8* to, std::size_t pixels, const Relief& relief) {
    const auto [high, low] = SlopeFrom(from, from + relief.neighbour, relief.sign);
    if constexpr (bytes == 3) {
        WriteMeanSlopes(high, low, to, pixels);
    } else {
        AddDifference(high, low, to, pixels, relief.ground, relief.stores);
    }
}

template <std::size_t bytes>
void CopyRun(const u8* from, u8* to, std::size_t pixels, const Relief&) {
    std::memcpy(to, from, pixels * bytes);
}

template <std::size_t bytes>
void FillRun(const u8*, u8* to, std::size_t pixels, const Relief& relief) {
    for (; pixels > 0; --pixels, to += bytes) {
        CopyPixel<bytes>(relief.ground.At(0), to);
    }
}

using PixelRun = void (*)(const u8* from, u8* to, std::size_t pixels, const Relief& relief);

template <std::size_t bytes>
PixelRun InteriorRun(i32 mode) {
    switch (mode) {
    case kOriginal:
        return WriteOriginal<bytes>;
    case kGray:
        return WriteGray<bytes>;
    default:
        return WriteChannels<bytes>;
    }
}

template <std::size_t bytes>
WorkEnd WriteRelief(const KernelRun& run, const Relief& relief, i32 mode, i32 reach) {
    const PixelRun interior = InteriorRun<bytes>(mode);
    const PixelRun border = mode == kOriginal ? CopyRun<bytes> : FillRun<bytes>;
    const i32 height = run.source.height;
    const auto width = static_cast<std::size_t>(run.source.width);
    const auto edge = static_cast<std::size_t>(reach);
    const std::size_t left = edge * bytes;
    const std::size_t right = (width - edge) * bytes;
    for (i32 y = 0; y < height; ++y) {
        const u8* from = run.source.Row(y);
        u8* to = run.ResultRow(y);
        if (y < reach || y >= height - reach) { // asks here too, but reports nothing
            if (!run.GoOn()) {
                return WorkEnd::Stopped;
            }
            border(from, to, width, relief);
            continue;
        }
        if (!run.BeginLine(y, height)) {
            return WorkEnd::Stopped;
        }
        border(from, to, edge, relief);
        interior(from + left, to + left, width - 2 * edge, relief);
        border(from + right, to + right, edge, relief);
    }
    return WorkEnd::Done;
}

} // namespace

DibHandle Emboss(DibHandle source, const EmbossParams& params) {
    if (params.mode < kOriginal || params.mode > kActive || params.depth < 1 || params.depth > 10 ||
        params.direction < 1 || params.direction > 8) {
        return 0;
    }
    const Direction direction = kDirections[static_cast<std::size_t>(params.direction - 1)];
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const DibView& picture = run.source;
        const i32 reach = std::min({params.depth, picture.width / 2, picture.height / 2});
        const PixelColour ground = params.mode == kActive ? PixelOfColour(params.backColor, picture)
                                                          : PixelColour{128, 128, 128};
        const Relief relief{
            .neighbour = reach * (direction.y * static_cast<std::ptrdiff_t>(picture.stride) +
                                  direction.x * static_cast<std::ptrdiff_t>(PixelBytes(picture))),
            .sign = direction.sign,
            .ground = RowPattern([&](std::size_t i) { return ground[i % 3]; }),
            .stores = StoresFor(picture)};
        run.CopyHead();
        return WithPixelBytes(picture, [&](auto bytes) {
            return WriteRelief<bytes>(run, relief, params.mode, reach);
        });
    });
}

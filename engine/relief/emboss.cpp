// Turns the picture into a relief: the difference of two pixels along one of eight directions, over
// a background. A border as wide as their distance is background alone, on all four sides.
#include "engine/pixel.h"
#include "engine/relief/relief_kernels.h"

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
    PixelColour background;
};

// The mean over the channels of a difference, truncated toward zero.
template <std::size_t bytes>
i32 MeanSlope(const u8* high, const u8* low, i32 sign) {
    i32 sum = 0;
    for (std::size_t channel = 0; channel < bytes; ++channel) {
        sum += high[channel] - low[channel];
    }
    return sign * sum / static_cast<i32>(bytes);
}

// Adds the relief to the picture.
template <std::size_t bytes>
void WriteOriginal(const u8* from, u8* to, i32 pixels, const Relief& relief) {
    for (; pixels > 0; --pixels, from += bytes, to += bytes) {
        const i32 slope =
            MeanSlope<bytes>(from + relief.neighbour, from - relief.neighbour, relief.sign);
        for (std::size_t channel = 0; channel < bytes; ++channel) {
            to[channel] = ClampToByte(from[channel] + slope);
        }
    }
}

// A relief of each channel by itself.
template <std::size_t bytes>
void WriteChannels(const u8* from, u8* to, i32 pixels, const Relief& relief) {
    for (; pixels > 0; --pixels, from += bytes, to += bytes) {
        const u8* neighbour = from + relief.neighbour;
        for (std::size_t channel = 0; channel < bytes; ++channel) {
            to[channel] = ClampToByte(relief.sign * (neighbour[channel] - from[channel]) +
                                      relief.background[channel]);
        }
    }
}

// A relief without colour.
template <std::size_t bytes>
void WriteGray(const u8* from, u8* to, i32 pixels, const Relief& relief) {
    for (; pixels > 0; --pixels, from += bytes, to += bytes) {
        const i32 slope = MeanSlope<bytes>(from + relief.neighbour, from, relief.sign);
        for (std::size_t channel = 0; channel < bytes; ++channel) {
            to[channel] = ClampToByte(slope + relief.background[channel]);
        }
    }
}

template <std::size_t bytes>
void CopyRun(const u8* from, u8* to, i32 pixels, const Relief&) {
    std::memcpy(to, from, static_cast<std::size_t>(pixels) * bytes);
}

template <std::size_t bytes>
void FillRun(const u8*, u8* to, i32 pixels, const Relief& relief) {
    for (; pixels > 0; --pixels, to += bytes) {
        CopyPixel<bytes>(relief.background.data(), to);
    }
}

using PixelRun = void (*)(const u8* from, u8* to, i32 pixels, const Relief& relief);

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
    const i32 width = run.source.width;
    const i32 height = run.source.height;
    const std::size_t left = static_cast<std::size_t>(reach) * bytes;
    const std::size_t right = static_cast<std::size_t>(width - reach) * bytes;
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
        border(from, to, reach, relief);
        interior(from + left, to + left, width - 2 * reach, relief);
        border(from + right, to + right, reach, relief);
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
        Relief relief{.neighbour = 0, .sign = direction.sign, .background = {128, 128, 128}};
        relief.neighbour = reach * (direction.y * static_cast<std::ptrdiff_t>(picture.stride) +
                                    direction.x * static_cast<std::ptrdiff_t>(PixelBytes(picture)));
        if (params.mode == kActive) {
            relief.background = PixelOfColour(params.backColor, picture);
        }
        run.CopyHead();
        return WithPixelBytes(picture, [&](auto bytes) {
            return WriteRelief<bytes>(run, relief, params.mode, reach);
        });
    });
}

// Turns the hue by an angle and moves the saturation, in integers. The hue step keeps the largest
// and the smallest channel and moves only the middle one. Palette pictures of any kind have their
// palette turned; a grey palette comes out as it was.
#include "engine/colour/colour_kernels.h"
#include "engine/colour/tone_map.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

struct Colour {
    i32 red, green, blue;
};

// Fixed point: 128 is one.
class Saturation {
public:
    explicit Saturation(i32 percent) {
        for (i32 tone = 0; tone < 256; ++tone) {
            const i32 pull = (tone * 128 * percent + 50) / 100;
            pull_[static_cast<std::size_t>(tone)] = pull;
            keep_[static_cast<std::size_t>(tone)] = tone * 128 - pull;
        }
    }

    // Pulls a channel toward the largest one, or with a negative percentage away from it.
    u8 Move(i32 channel, i32 largest) const {
        const i32 moved =
            keep_[static_cast<std::size_t>(channel)] + pull_[static_cast<std::size_t>(largest)];
        return static_cast<u8>(std::clamp(moved >> 7, 0, 255));
    }

private:
    std::array<i32, 256> keep_;
    std::array<i32, 256> pull_;
};

// The hue scaled by the distance of the largest and the smallest channel: sixty degrees are
// 60 * spread. A tie goes to red, then to green.
i32 HueOf(const Colour& colour, i32 largest, i32 spread) {
    if (colour.red == largest) {
        return 60 * (colour.green - colour.blue);
    }
    if (colour.green == largest) {
        return 60 * (2 * spread + colour.blue - colour.red);
    }
    return 60 * (colour.red - colour.green - 2 * spread);
}

// The colour `degrees` further round the wheel.
Colour Turn(const Colour& colour, i32 largest, i32 smallest, i32 degrees) {
    const i32 spread = largest - smallest;
    const i32 sixty = 60 * spread;
    i32 hue = HueOf(colour, largest, spread) + spread * degrees;
    if (hue < 0) {
        hue += 6 * sixty;
    }
    const i32 sector = hue / sixty;
    i32 rest = hue % sixty;
    if (sector % 2 == 0) {
        rest = sixty - rest;
    }
    const i32 middle = largest - (rest + 30) / 60;
    switch (sector) {
    case 1:
        return {middle, largest, smallest};
    case 2:
        return {smallest, largest, middle};
    case 3:
        return {smallest, middle, largest};
    case 4:
        return {middle, smallest, largest};
    case 5:
        return {largest, smallest, middle};
    default: // 0, and 6 for a full turn
        return {largest, middle, smallest};
    }
}

class HueAndSaturation {
public:
    explicit HueAndSaturation(const HueSaturationParams& params)
        : degrees_(params.hue), saturation_(params.saturation) {}

    // A grey is left as it is.
    void Apply(const u8* from, u8* to) const {
        Colour colour{from[2], from[1], from[0]};
        const auto [smallest, largest] = std::minmax({colour.red, colour.green, colour.blue});
        if (largest != smallest) {
            if (degrees_ != 0) {
                colour = Turn(colour, largest, smallest, degrees_);
            }
            to[0] = saturation_.Move(colour.blue, largest);
            to[1] = saturation_.Move(colour.green, largest);
            to[2] = saturation_.Move(colour.red, largest);
        } else {
            std::memcpy(to, from, 3);
        }
    }

private:
    const i32 degrees_;
    const Saturation saturation_;
};

// Copies the rows as one run of bytes, and asks and reports where bits 0 to 7 and bit 9 of a byte's
// number are clear: at bytes 0, 256, 1024, 1280, 2048 and so on.
WorkEnd CopyRowsByBytes(const KernelRun& run) {
    const std::size_t bytes = run.source.size - run.source.head;
    std::size_t end = 0;
    for (std::size_t at = 0; at < bytes; at = end) {
        if (!run.GoOn()) {
            return WorkEnd::Stopped;
        }
        ReportProgress(static_cast<i32>(u64{at} * 100 / bytes));
        end = std::min(bytes, at + ((at & 256) == 0 ? 256 : 768));
        std::memcpy(run.ResultRow(0) + at, run.source.Row(0) + at, end - at);
    }
    return WorkEnd::Done;
}

} // namespace

DibHandle HueSaturation(DibHandle source, const HueSaturationParams& params) {
    if (params.hue < -180 || params.hue > 180 || params.saturation < -100 ||
        params.saturation > 100 || (params.hue == 0 && params.saturation == 0)) {
        return 0;
    }
    const HueAndSaturation effect(params);
    return RunKernel(source, Depths::PaletteAware, [&](const KernelRun& run) {
        run.CopyHead();
        if (run.source.imageClass == ImageClass::Colour) {
            return run.ForEachRow([&](const u8* from, u8* to) {
                for (i32 x = 0; x < run.source.width; ++x, from += 3, to += 3) {
                    effect.Apply(from, to);
                }
            });
        }
        const WorkEnd end = CopyRowsByBytes(run);
        if (end == WorkEnd::Done) {
            ForEachPaletteColour(run, [&](const u8* from, u8* to) { effect.Apply(from, to); });
        }
        return end;
    });
}

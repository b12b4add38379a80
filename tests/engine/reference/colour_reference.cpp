#include "tests/engine/reference/reference_kernels.h"

#include <cmath>

namespace {

using Table = std::array<u8, 256>;

template <class Value>
Table MakeTable(Value value) {
    Table table;
    for (i32 i = 0; i < 256; ++i) {
        table[static_cast<std::size_t>(i)] = static_cast<u8>(value(i));
    }
    return table;
}

i32 Look(const Table& table, i32 value) {
    return table[static_cast<std::size_t>(value)];
}

// Channel 1 is red, the last byte of a pixel; 0 is all three.
Pixel MapChannel(const Table& table, i32 channel, Pixel pixel) {
    for (i32 c = 0; c < 3; ++c) {
        i32& value = pixel[static_cast<std::size_t>(c)];
        value = channel == 0 || c == 3 - channel ? Look(table, value) : value;
    }
    return pixel;
}

bool TakesPalettes(const ReferenceRun& run) {
    return run.IsGreyOrColour() || run.IsPalette();
}

bool MapThrough(ReferenceRun& run, const Table& table, i32 channel = 0) {
    run.MapTones([&](Pixel p) { return MapChannel(table, channel, p); },
                 [&](i32 v) { return Look(table, v); });
    return true;
}

bool BrightnessContrast(ReferenceRun& run, const BrightnessContrastParams& params) {
    const i32 b = Clamp(params.brightness, -128, 127);
    const i32 c = Clamp(params.contrast, -128, 127);
    const i32 channel = params.channel >= 0 && params.channel <= 2 ? params.channel : 3;
    if ((b == 0 && c == 0) || !TakesPalettes(run)) {
        return false;
    }
    const Table table = MakeTable([=](i32 i) {
        const i32 x = i + b;
        return x < c         ? 0
               : x > 255 - c ? 255
                             : ClampByte(((x - c) * 255 + (255 - 2 * c) / 2) / (255 - 2 * c));
    });
    run.MapTones([&](Pixel p) { return MapChannel(table, channel, p); },
                 [&](i32 v) { return channel <= 1 ? Look(table, v) : v; }, 32, false);
    return true;
}

Pixel TurnHue(const Pixel& pixel, const HueSaturationParams& params) {
    const auto [b, g, r] = pixel;
    const i32 most = std::max({b, g, r}), least = std::min({b, g, r}), d = most - least;
    if (d == 0) {
        return pixel;
    }
    Pixel turned = pixel;
    if (params.hue != 0) {
        const i32 sixty = 60 * d;
        i32 hue = r == most   ? 60 * (g - b)
                  : g == most ? 2 * sixty + 60 * (b - r)
                              : 60 * (r - g) - 2 * sixty;
        hue += d * params.hue;
        hue += hue < 0 ? 6 * sixty : 0;
        const i32 sector = hue / sixty;
        const i32 rest = sector % 2 == 0 ? sixty - hue % sixty : hue % sixty;
        const i32 mid = most - (rest + 30) / 60;
        const Pixel sectors[] = {{least, mid, most}, {least, most, mid}, {mid, most, least},
                                 {most, mid, least}, {most, least, mid}, {mid, least, most}};
        turned = sectors[sector % 6];
    }
    const auto pull = [&](i32 i) { return (i * 128 * params.saturation + 50) / 100; };
    for (i32& value : turned) {
        const i32 t = value * 128 - pull(value) + pull(most);
        value = t < 0 ? 0 : std::min(t / 128, 255);
    }
    return turned;
}

bool HueSaturation(ReferenceRun& run, const HueSaturationParams& params) {
    if (params.hue < -180 || params.hue > 180 || params.saturation < -100 ||
        params.saturation > 100 || (params.hue == 0 && params.saturation == 0) ||
        !TakesPalettes(run)) {
        return false;
    }
    if (run.kind == ImageClass::Colour) {
        run.MapTones([&](Pixel p) { return TurnHue(p, params); }, [](i32 v) { return v; });
        return true;
    }
    run.CopyHead();
    const std::size_t total = run.result.size() - run.head;
    for (std::size_t i = 0; i < total; ++i) {
        if ((i & 0x2FF) == 0) {
            run.Ask();
            run.Report(static_cast<i64>(i * 100 / total));
        }
        run.result[run.head + i] = run.block[run.head + i];
    }
    for (i32 i = 0; i < run.entries; ++i) {
        run.PutColour(&run.result[40 + static_cast<std::size_t>(i) * 4],
                      TurnHue(run.Entry(i), params));
    }
    return true;
}

bool ToneTable(ReferenceRun& run, const ToneTableParams& params) {
    const Table table = MakeTable([&](i32 i) { return params.table[i]; });
    return params.channel >= 0 && params.channel <= 3 && TakesPalettes(run) &&
           MapThrough(run, table, params.channel);
}

bool ColorReduction(ReferenceRun& run, const ColorReductionParams& params) {
    if (params.levels < 2 || params.levels > 128) {
        return false;
    }
    const i32 step = ((params.levels - 1) / 2 + 255) / (params.levels - 1);
    ToneTableParams tone = {params.channel, {}};
    for (i32 i = 0; i < 256; ++i) {
        tone.table[i] = static_cast<u8>(std::min((i + step / 2) / step * step, 255));
    }
    if (!ToneTable(run, tone)) {
        return false;
    }
    // With all channels a colour row goes through the table with its padding.
    for (i32 y = 0; y < run.h && run.kind == ImageClass::Colour && params.channel == 0; ++y) {
        for (std::size_t at = run.Offset(run.w, y, 0); at < run.Offset(0, y + 1, 0); ++at) {
            run.result[at] = tone.table[run.block[at]];
        }
    }
    return true;
}

bool Equalize(ReferenceRun& run, const NoParams&) {
    if (!TakesPalettes(run)) {
        return false;
    }
    std::array<i64, 256> counts{};
    for (i32 y = 0; y < run.h; ++y) {
        if (run.IsPalette()) {
            run.Ask();
        }
        for (i32 x = 0; x < run.w; ++x) {
            const Pixel entry = run.IsPalette() ? run.Entry(run.Index(x, y)) : Pixel{};
            for (i32 c = 0; c < (run.kind == ImageClass::Grey ? 1 : 3); ++c) {
                const i32 value =
                    run.IsPalette() ? entry[static_cast<std::size_t>(c)] : run.At(x, y, c);
                ++counts[static_cast<std::size_t>(value)];
            }
        }
    }
    const double n = (run.kind == ImageClass::Grey ? 1.0 : 3.0) * run.w * run.h;
    const double factor = 255.0 / (n + 1.0);
    i64 below = 0;
    return MapThrough(run, MakeTable([&](i32 i) {
                          const double sum = static_cast<double>(below);
                          below += counts[static_cast<std::size_t>(i)];
                          return sum * factor + 0.5;
                      }));
}

bool Negative(ReferenceRun& run, const NoParams&) {
    if (run.IsPalette()) {
        return MapThrough(run, MakeTable([](i32 i) { return 255 - i; }));
    }
    if (run.kind == ImageClass::None) {
        return false;
    }
    run.CopyHead();
    for (i32 y = 0; y < run.h; ++y) {
        run.Line(y, run.h);
        for (std::size_t at = run.Offset(0, y, 0); at < run.Offset(0, y + 1, 0); ++at) {
            run.result[at] = static_cast<u8>(255 - run.block[at]);
        }
    }
    return true;
}

bool Threshold(ReferenceRun& run, const ThresholdParams& params) {
    if (params.level < 0 || params.level > 255 || !TakesPalettes(run)) {
        return false;
    }
    run.MapTones(
        [&](Pixel p) {
            const i32 y = 76 * p[2] + 150 * p[1] + 29 * p[0];
            const i32 value = 255 * params.level < y ? 255 : 0;
            return Pixel{value, value, value};
        },
        [&](i32 v) { return params.level < v ? 255 : 0; });
    return true;
}

bool ToneAdjustment(ReferenceRun& run, const ToneAdjustmentParams& params) {
    const i64 high = params.highlight, mid = params.midtone, shadow = params.shadow;
    const double gamma = 1.0 - static_cast<double>(mid) * (mid >= 0 ? 0.0045 : 0.035);
    const i64 lowIn = std::max<i64>(-shadow, 0), lowOut = std::max<i64>(shadow, 0);
    const i64 highIn = 255 - std::max<i64>(high, 0), drop = std::max<i64>(-high, 0);
    const double span = static_cast<double>(std::max<i64>(highIn - lowIn, 1));
    const Table table = MakeTable([=](i32 i) -> i64 {
        if (i <= lowIn || i >= highIn || drop + lowOut >= 255) {
            return i <= lowIn ? 0 : i >= highIn ? 255 : lowOut;
        }
        const double power = std::pow(static_cast<double>(i - lowIn) / span, gamma);
        return ClampByte(static_cast<i64>(power * static_cast<double>(255 - drop - lowOut) + 0.5) +
                         lowOut);
    });
    ToneTableParams tone = {params.channel, {}};
    std::copy(table.begin(), table.end(), tone.table);
    return ToneTable(run, tone);
}

bool WhitePoint(ReferenceRun& run, const WhitePointParams& params) {
    const i64 gain = params.gain;
    const Table table = MakeTable([=](i32 i) {
        return ClampByte(gain > 0 ? (gain / 2 + 255 * i) / gain : (127 - i * gain) / 255);
    });
    return run.IsGreyOrColour() && MapThrough(run, table);
}

bool ToneFold(ReferenceRun& run, const NoParams&) {
    return TakesPalettes(run) &&
           MapThrough(run, MakeTable([](i32 i) { return i < 128 ? i : 255 - i; }));
}

bool LogTone(ReferenceRun& run, const NoParams&) {
    if (!TakesPalettes(run)) {
        return false;
    }
    return MapThrough(run, MakeTable([&](i32 i) {
                          run.Ask();
                          const double tone = 255 * std::log(i + 1) / std::log(256) + 0.5;
                          return ClampByte(static_cast<i64>(tone));
                      }));
}

constexpr ReferenceRow kRows[] = {
    {1, With<BrightnessContrast>}, {2, With<HueSaturation>},      {3, With<ToneTable>},
    {4, With<ColorReduction>},     {5, With<Equalize>},           {6, With<Negative>},
    {7, With<Threshold>},          {23, With<ToneFold>},          {24, With<LogTone>},
    {67, With<ToneAdjustment>},    {70, With<WhitePoint>, false},
};

} // namespace

const std::span<const ReferenceRow> kColourReferences = kRows;

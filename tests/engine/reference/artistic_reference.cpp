#include "tests/engine/reference/reference_kernels.h"

#include <cmath>

namespace {

bool OilPainting(ReferenceRun& run, const IntensityParams& params) {
    if (!run.IsGreyOrColour()) {
        return false;
    }
    const i32 r = Clamp(params.intensity, 1, 100);
    run.CopyHead();
    run.EachSample([&](i32 x, i32 y, i32 c) {
        std::array<i32, 32> counts{};
        for (i32 atY = y - r; atY <= y + r; ++atY) {
            for (i32 atX = x - r; atX <= x + r; ++atX) {
                ++counts[static_cast<std::size_t>(run.Near(atX, atY, c) / 8)];
            }
        }
        return (std::max_element(counts.begin(), counts.end()) - counts.begin()) * 8;
    });
    return true;
}

bool Sketch(ReferenceRun& run, const SketchParams& params) {
    if (params.style < 1 || params.style > 2 || params.threshold < 0 || params.threshold > 254 ||
        !run.IsGreyOrColour()) {
        return false;
    }
    const bool crayon = params.style == 1;
    const auto gradient = [&](i32 x, i32 y, i32 c, i32 alongX, i32 alongY) {
        i32 sum = 0;
        for (i32 side = -1; side <= 1; ++side) {
            const i32 weight = side == 0 ? 2 : 1;
            const i32 acrossX = alongY * side, acrossY = alongX * side;
            sum += weight * (run.At(x + alongX + acrossX, y + alongY + acrossY, c) -
                             run.At(x - alongX + acrossX, y - alongY + acrossY, c));
        }
        return std::abs(sum);
    };
    run.CopyHead();
    for (i32 stage = 0; stage < 2; ++stage) {
        for (i32 y = 1; y < run.h - 1; ++y) {
            run.Line(y, run.h, stage * 50, 50);
        }
    }
    for (i32 y = 0; y < run.h; ++y) {
        for (i32 x = 0; x < run.w; ++x) {
            Pixel t{};
            const bool rim = x == 0 || x == run.w - 1 || y == 0 || y == run.h - 1;
            for (i32 c = 0; c < run.channels && !rim; ++c) {
                t[static_cast<std::size_t>(c)] =
                    ClampByte(gradient(x, y, c, 1, 0) + std::min(gradient(x, y, c, 0, 1), 255));
            }
            const i32 mean = (t[0] + t[1] + t[2]) / run.channels;
            for (i32 c = 0; c < run.channels; ++c) {
                const i32 tone = crayon ? t[static_cast<std::size_t>(c)] : mean;
                const i32 line = tone < params.threshold || rim ? 0 : tone;
                run.Put(x, y, c, crayon ? line : 255 - line);
            }
        }
    }
    return true;
}

bool AutoEnhance(ReferenceRun& run, const IntensityParams& params) {
    if (!run.IsByteOrColour()) {
        return false;
    }
    const i32 boost = params.intensity / 5;
    const i32 highCut = 255 - boost;
    const i32 lowCut = params.intensity / 25;
    const double exponent = (1.0 - lowCut * 0.06) * (1000.0 - params.intensity) * 0.001;
    const auto curve = [&](i32 i) {
        if (i <= lowCut || i >= highCut) {
            return i <= lowCut ? 0 : 255;
        }
        const double tone = std::pow(static_cast<double>(i) / highCut, exponent) * 255.0 + 0.5;
        return static_cast<i32>(tone) & 255;
    };
    run.result.assign(run.block.begin(), run.block.end());
    for (i32 y = 0; y < run.h; ++y) {
        for (i32 x = 0; x < run.w; ++x) {
            Pixel p{};
            for (i32 c = 0; c < run.channels; ++c) {
                p[static_cast<std::size_t>(c)] = curve(run.At(x, y, c));
            }
            const i32 most = *std::max_element(p.begin(), p.end());
            for (i32 c = 0; c < run.channels; ++c) {
                const i32 v = p[static_cast<std::size_t>(c)];
                const u8 pull = static_cast<u8>((50 + (most - v) * boost) / 100);
                run.Put(x, y, c, run.channels == 3 && boost != 0 ? std::max(v - pull, 0) : v);
            }
        }
    }
    if (boost == 0 || run.w < 3 || run.h < 3) {
        return true;
    }
    const std::vector<u8> toned = run.result;
    const ReferenceRun before(toned, 0, 0);
    for (i32 y = 0; y < run.h; ++y) {
        for (i32 x = 0; x < run.w; ++x) {
            for (i32 c = 0; c < run.channels; ++c) {
                i32 s = 9 * before.At(x, y, c);
                for (i32 i = 0; i < 9; ++i) {
                    s -= before.Near(x + i % 3 - 1, y + i / 3 - 1, c);
                }
                run.Put(x, y, c, ClampByte(before.At(x, y, c) + s * boost / 800));
            }
        }
    }
    return true;
}

bool IsIntensity(i32 intensity) {
    return intensity >= 1 && intensity <= 100;
}

bool FilmGrain(ReferenceRun& run, const IntensityParams& params) {
    if (!IsIntensity(params.intensity) || !run.IsGreyOrColour()) {
        return false;
    }
    run.CopyHead();
    run.EachPixel([&](i32 x, i32 y) {
        const i32 d = params.intensity / 2 - run.Draw() % params.intensity;
        for (i32 c = 0; c < run.channels; ++c) {
            run.Put(x, y, c, ClampByte(run.At(x, y, c) + d));
        }
    });
    return true;
}

bool AddNoise(ReferenceRun& run, const IntensityParams& params) {
    if (!IsIntensity(params.intensity) || !run.IsGreyOrColour()) {
        return false;
    }
    run.CopyHead();
    run.EachPixel([&](i32 x, i32 y) {
        const bool replaced = run.Draw() % 100 < params.intensity;
        for (i32 c = 0; c < run.channels; ++c) {
            run.Put(x, y, c, replaced ? run.Draw() & 255 : run.At(x, y, c));
        }
    });
    return true;
}

bool Splash(ReferenceRun& run, const IntensityParams& params) {
    if (!run.IsGreyOrColour()) {
        return false;
    }
    const i32 spread = Clamp(params.intensity / 2, 1, 50) + 1;
    run.CopyHead();
    run.EachPixel([&](i32 x, i32 y) {
        const i32 fromX = x + spread / 2 - run.Draw() % spread;
        const i32 fromY = y + spread / 2 - run.Draw() % spread;
        run.CopyPixel(x, y, Clamp(fromX, 0, run.w - 1), Clamp(fromY, 0, run.h - 1));
    });
    return true;
}

bool Melting(ReferenceRun& run, const IntensityParams& params) {
    if (!IsIntensity(params.intensity) || !run.IsGreyOrColour()) {
        return false;
    }
    run.CopyHead();
    for (i32 y = 0; y < run.h; ++y) {
        run.CopyRowWhole(y);
    }
    const auto tone = [&](i32 x, i32 y) {
        return run.channels == 1 ? run.Out(x, y, 0)
                                 : run.Out(x, y, 0) + run.Out(x, y, 1) + run.Out(x, y, 2);
    };
    const i64 n = i64{run.w} * run.h / 100 * params.intensity;
    for (i64 i = 0; i < n; ++i) {
        run.Ask();
        if ((i & 0x4FF) == 0) {
            run.Report(i * 100 / n);
        }
        const i32 x = run.Draw() % run.w;
        for (i32 y = run.Draw() % run.h; y >= 2 && tone(x, y) <= tone(x, y - 1); --y) {
            for (i32 c = 0; c < run.channels; ++c) {
                const i32 sinking = run.Out(x, y, c);
                run.Put(x, y, c, run.Out(x, y - 1, c));
                run.Put(x, y - 1, c, sinking);
            }
        }
    }
    return true;
}

bool Ripple(ReferenceRun& run, const IntensityParams& params) {
    if (!run.IsGreyOrColour()) {
        return false;
    }
    const i32 length = Clamp(params.intensity, 1, 100) / 2 + 3;
    const auto offset = [&](i32 i) {
        const i32 p = std::abs(length - i % (2 * length));
        return static_cast<i32>(p * std::sin(i * 12.5663706 / length) * 0.25 + 0.5);
    };
    run.CopyHead();
    run.EachPixel([&](i32 x, i32 y) {
        run.CopyPixel(x, y, Clamp(x + offset(y), 0, run.w - 1),
                      Clamp(y + offset(x + y), 0, run.h - 1));
    });
    return true;
}

bool Wrinkle(ReferenceRun& run, const WrinkleParams& params) {
    if (!IsIntensity(params.intensity) || !run.IsGreyOrColour()) {
        return false;
    }
    const auto step = [&] {
        const i32 r = run.Draw() % 1000, p = params.intensity * 5;
        return r < p ? 1 : r > 1000 - p ? -1 : 0;
    };
    std::vector<i32> columnShifts;
    for (i32 x = 0, walk = 0; x < run.w; ++x) {
        columnShifts.push_back(walk += step());
    }
    run.CopyHead();
    i32 rowShift = 0;
    run.EachPixel([&](i32 x, i32 y) {
        rowShift += x == 0 ? step() : 0;
        const i32 fromX = x + rowShift, fromY = y + columnShifts[static_cast<std::size_t>(x)];
        if (fromX >= 0 && fromX < run.w && fromY >= 0 && fromY < run.h) {
            run.CopyPixel(x, y, fromX, fromY);
            return;
        }
        for (i32 c = 0; c < run.channels; ++c) {
            run.Put(x, y, c, params.fillColor >> 8 * (run.channels - 1 - c));
        }
    });
    return true;
}

constexpr ReferenceRow kRows[] = {
    {32, With<Sketch>},      {33, With<AutoEnhance>, false, false},
    {34, With<FilmGrain>},   {35, With<Splash>},
    {36, With<Ripple>},      {37, With<Wrinkle>},
    {38, With<AddNoise>},    {39, With<Melting>},
    {40, With<OilPainting>},
};

} // namespace

const std::span<const ReferenceRow> kArtisticReferences = kRows;

#include "tests/engine/reference/reference_kernels.h"

#include <cmath>

namespace {

// The squared elliptical radius of a pixel: 512 on the ellipse that touches the picture's edges.
i64 EllipseRadius(const ReferenceRun& run, i64 dx, i64 dy) {
    i64 normX = i64{1 - run.w} * (1 - run.w), normY = i64{1 - run.h} * (1 - run.h);
    i32 bits = 0;
    for (i64 sum = normX + normY; sum != 0 && bits < 31; sum >>= 1) {
        ++bits;
    }
    const i32 up = std::min(31 - bits, 9);
    normX = std::max<i64>(normX >> (9 - up), 1);
    normY = std::max<i64>(normY >> (9 - up), 1);
    return (dx * dx << up) / normX + (dy * dy << up) / normY;
}

// Each pixel inside the ellipse comes from where the matrix (cos, -sin; sin, cos) of its radius,
// with 16384 for 1, takes it. `matrix` gives the pair for a radius from 0 to 511. Only every
// `rhythm`-th row asks, and reports.
struct Turn {
    i32 cos;
    i32 sin;
};
template <class Matrix>
bool Warp(ReferenceRun& run, Matrix matrix, i32 rhythm = 1) {
    std::array<Turn, 512> turns;
    for (i32 i = 0; i < 512; ++i) {
        turns[static_cast<std::size_t>(i)] = matrix(i);
    }
    run.CopyHead();
    for (i32 y = 0; y < run.h; ++y) {
        if (y % rhythm == 0) {
            run.Line(y, run.h);
        }
        for (i32 x = 0; x < run.w; ++x) {
            const i64 dx = 2 * x + 1 - run.w, dy = 2 * y + 1 - run.h;
            const i64 radius = EllipseRadius(run, dx, dy);
            if (radius >= 512) {
                run.CopyPixel(x, y, x, y);
                continue;
            }
            const auto [cos, sin] = turns[static_cast<std::size_t>(std::max<i64>(radius, 1))];
            run.CopyPixel(x, y,
                          Clamp((cos * dx - sin * dy + run.w * 16384 - 8192) >> 15, 0, run.w - 1),
                          Clamp((sin * dx + cos * dy + run.h * 16384 - 8192) >> 15, 0, run.h - 1));
        }
    }
    return true;
}

i32 Fixed(double value) {
    return static_cast<i32>(value * 16384.0);
}

bool RadialWarp(ReferenceRun& run, const RadialWarpParams& params) {
    const bool hasIntensity = params.intensity >= 1 && params.intensity <= 100;
    if (params.mode < 1 || params.mode > 3 || (params.mode != 2 && !hasIntensity) ||
        !run.IsGreyOrColour()) {
        return false;
    }
    return Warp(run, [&](i32 i) -> Turn {
        const double u = i * 0.001953125, s = std::sqrt(u);
        if (i == 0) {
            return {0, 0};
        }
        switch (params.mode) {
        case 1:
            return {static_cast<i32>(16384.0 / std::pow(u, params.intensity * 0.003)), 0};
        case 2:
            return {Fixed((2 * std::asin(s)) / (s * 3.14159265)), 0};
        default:
            return {Fixed(std::pow(u, params.intensity * 0.0075)), 0};
        }
    });
}

bool AngularWarp(ReferenceRun& run, const AngularWarpParams& params) {
    if (params.mode < 1 || params.mode > 4 || params.intensity < 1 || params.intensity > 100 ||
        !run.IsGreyOrColour()) {
        return false;
    }
    return Warp(run, [&](i32 i) -> Turn {
        const double s = std::sqrt(i * 0.001953125), t = s * s;
        if (params.mode == 3) {
            return {static_cast<i32>((1 - t) * 16384.0 / (1 + t)),
                    static_cast<i32>(s * 32768.0 / (1 + t))};
        }
        if (params.mode == 4) {
            return {Fixed(1 - s), Fixed(std::sqrt(2 * (1 - s) * s))};
        }
        const double a = params.mode == 1
                             ? s * params.intensity * 0.12566370600000001
                             : (s - 1) * (s - 1) * params.intensity * -0.06283185300000001;
        return {Fixed(std::cos(a)), Fixed(std::sin(a))};
    });
}

template <i32 mode>
bool RadialMode(ReferenceRun& run, const IntensityParams& params) {
    return RadialWarp(run, {mode, params.intensity});
}

template <i32 mode>
bool AngularMode(ReferenceRun& run, const IntensityParams& params) {
    return AngularWarp(run, {mode, params.intensity});
}

bool Bulge(ReferenceRun& run, const NoParams&) {
    return RadialWarp(run, {2, 20});
}

bool MagicMirror(ReferenceRun& run, const MagicMirrorParams& params) {
    if (params.mapping < 0 || params.mapping > 3 || !run.IsByteOrColour()) {
        return false;
    }
    const auto curve = [&](double u) {
        const i32 i = static_cast<i32>(u);
        const double low = (i + 1 - u) * params.curve[i];
        return i >= 255 ? low : low + (u - i) * params.curve[i + 1];
    };
    const auto bend = [&](i32 r) { return r * 0.498046875 - curve(r * 0.498046875); };
    if (params.mapping == 2) {
        return Warp(
            run,
            [&](i32 r) -> Turn {
                const double e = bend(r) * 0.01;
                return {r == 0 ? 0 : Fixed(e >= 0 ? 1 + e : 1 / (1 - e)), 0};
            },
            32);
    }
    if (params.mapping == 3) {
        return Warp(
            run,
            [&](i32 r) -> Turn {
                const double a = bend(r) * 0.031415926500000003;
                return {Fixed(std::cos(a)), Fixed(std::sin(a))};
            },
            32);
    }
    const i32 length = params.mapping == 0 ? run.w : run.h;
    const i32 n = std::max(length, 2);
    const double step = 255.0 / (n - 1), scale = (n - 1) * 0.00392156862745098;
    std::vector<i32> from;
    double u = 0;
    for (i32 k = 0; k < n; ++k, u += step) {
        from.push_back(std::min(static_cast<i32>(curve(u) * scale + 0.5), length - 1));
    }
    run.CopyHead();
    for (i32 y = 0; y < run.h; ++y) {
        if (y % 32 == 0) {
            run.Line(y, run.h);
        }
        for (i32 x = 0; x < run.w; ++x) {
            const bool along = params.mapping == 0;
            const i32 moved = from[static_cast<std::size_t>(along ? x : y)];
            run.CopyPixel(x, y, along ? moved : x, along ? y : moved);
        }
    }
    return true;
}

bool Ribbon(ReferenceRun& run, const RibbonParams& params) {
    if (params.amplitude < 0 || !run.IsGreyOrColour()) {
        return false;
    }
    const i64 band = i64{params.amplitude} * run.h * 3 / 400;
    const double step = params.frequency * 0.1 / run.w;
    run.CopyHead();
    run.EachPixel([&](i32 x, i32 y) {
        const double wave = (std::cos(x * step * 3.1415926) + 1.0) * 0.5;
        const i64 from = y - static_cast<i64>(wave * static_cast<double>(band));
        if (from >= 0 && from <= run.h - band - 1) {
            run.CopyPixel(x, y, x, from);
            return;
        }
        for (i32 c = 0; c < run.channels; ++c) {
            run.Put(x, y, c, params.backColor >> 8 * (run.channels - 1 - c));
        }
    });
    return true;
}

bool ArcsineStretch(ReferenceRun& run, const NoParams&) {
    if (!run.IsGreyOrColour()) {
        return false;
    }
    run.CopyHead();
    std::vector<std::pair<u16, u16>> positions; // rows beyond 65,536 pixels wrap around
    for (i32 x = 0; x < run.w; ++x) {
        run.Ask();
        const double u = 2.0 * x / run.w - 1.0;
        const double r = run.w < 2 ? 0.0 : (std::asin(u) * 0.31830989161357204 + 0.5) * run.w;
        const i32 p = static_cast<i32>(r);
        positions.emplace_back(static_cast<u16>(p),
                               static_cast<u16>(static_cast<i32>((r - p) * 256.0)));
    }
    run.EachSample([&](i32 x, i32 y, i32 c) {
        const auto [p, f] = positions[static_cast<std::size_t>(x)];
        return (run.At(p, y, c) * (256 - f) + run.Near(p + 1, y, c) * f) >> 8;
    });
    return true;
}

constexpr ReferenceRow kRows[] = {
    {41, With<RadialMode<3>>},  {48, With<RadialMode<1>>}, {49, With<AngularMode<2>>},
    {50, With<AngularMode<1>>}, {55, With<Bulge>},         {56, With<MagicMirror>},
    {57, With<AngularWarp>},    {64, With<RadialWarp>},    {65, With<Ribbon>},
    {66, With<ArcsineStretch>},
};

} // namespace

const std::span<const ReferenceRow> kDistortionReferences = kRows;

#include "editors/curve.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

double Bend(CurvePreset preset, int t) {
    constexpr double kShare = 0.00392156862745098; // 1 / 255
    switch (preset) {
    case CurvePreset::Circle:
        return std::sqrt(65025 - (255 - t) * (255 - t)) + 0.5;
    case CurvePreset::Exponent:
        return (std::exp(t * kShare) - 1) * 148.40406270962072;
    case CurvePreset::Logarithm:
        return std::log(t + 1.0) * (255 / std::log(256.0)) + 0.5;
    case CurvePreset::Sine:
        return std::sin(t * 0.006159985490196079) * 255 + 0.5;
    case CurvePreset::Arcsine:
        return std::asin(t * kShare) * 162.33804472292175 + 0.5;
    case CurvePreset::Square:
        return static_cast<int>((t * t + 127) / 255);
    case CurvePreset::Squareroot:
        return std::sqrt(255.0) * std::sqrt(t) + 0.5;
    default:
        return t;
    }
}

u8 BentValue(CurvePreset preset, u8 value) {
    return static_cast<u8>(std::clamp(static_cast<int>(Bend(preset, value)), 0, 255));
}

// The mean of up to three neighbours on either side, as many as there are on both. Rounded, but for
// the two ends, which have one neighbour and are cut.
Curve Smoothed(const Curve& curve) {
    constexpr int kLast = 255;
    constexpr int kReach = 3;
    Curve smooth;
    for (int i = 0; i <= kLast; ++i) {
        const int reach = std::min({i, kLast - i, kReach});
        const auto first = curve.begin() + std::max(i - std::max(reach, 1), 0);
        const auto end = curve.begin() + std::min(i + std::max(reach, 1), kLast) + 1;
        const auto count = static_cast<int>(end - first);
        const int half = reach == 0 ? 0 : count / 2;
        smooth[static_cast<std::size_t>(i)] =
            static_cast<u8>((std::accumulate(first, end, 0) + half) / count);
    }
    return smooth;
}

// Whole numbers, cut toward zero.
int Between(int k, CurvePoint from, CurvePoint to) {
    return (k - from.x) * (to.y - from.y) / (to.x - from.x) + from.y;
}

} // namespace

Curve IdentityCurve() {
    Curve curve;
    std::iota(curve.begin(), curve.end(), u8{0});
    return curve;
}

void ApplyPreset(Curve& curve, CurvePreset preset) {
    if (preset == CurvePreset::Reset) {
        curve = IdentityCurve();
    } else if (preset == CurvePreset::Smooth) {
        curve = Smoothed(curve);
    } else {
        std::ranges::transform(curve, curve.begin(),
                               [preset](u8 value) { return BentValue(preset, value); });
    }
}

std::optional<CurvePoint> CurvePointAt(int x, int y, int width, int height) {
    const int right = width - 2;
    const int bottom = height - 2;
    if (right < 1 || bottom < 1 || x < 1 || x > right + 1 || y < 1 || y > bottom + 1) {
        return std::nullopt;
    }
    return CurvePoint{static_cast<u8>((x * 255 - 255) / right),
                      static_cast<u8>(255 - (y * 255 - 255) / bottom)};
}

void ContinueStroke(Curve& curve, CurvePoint last, CurvePoint next) {
    if (last.x == next.x) {
        curve[next.x] = next.y;
    } else if (last.x < next.x) {
        for (int k = last.x + 1; k <= next.x; ++k) {
            curve[static_cast<std::size_t>(k)] = static_cast<u8>(Between(k, last, next));
        }
    } else {
        for (int k = next.x; k < last.x; ++k) {
            curve[static_cast<std::size_t>(k)] = static_cast<u8>(Between(k, next, last));
        }
    }
}

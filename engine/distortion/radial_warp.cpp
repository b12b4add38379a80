// Moves pixels along the rays from the centre: Cone draws them together, Fisheye and the arcsine
// bulge spread them.
#include "engine/distortion/distortion_kernels.h"
#include "engine/distortion/elliptical_warp.h"

#include <cmath>

namespace {

constexpr i32 kCone = 1;
constexpr i32 kArcsineBulge = 2;
constexpr i32 kFisheye = 3;

// How far from the centre a pixel comes from, by how far it lies itself, at the elliptical radius
// whose square is `square`.
double Factor(const RadialWarpParams& params, double square) {
    if (params.mode == kCone) {
        return kTurnUnit / std::pow(square, params.intensity * 0.003);
    }
    if (params.mode == kFisheye) {
        return std::pow(square, params.intensity * 0.0075) * kTurnUnit;
    }
    constexpr double kPi = 3.14159265;
    const double radius = std::sqrt(square);
    return (2.0 * std::asin(radius)) / (radius * kPi) * kTurnUnit;
}

TurnTable FactorTable(const RadialWarpParams& params) {
    TurnTable table{};
    for (std::size_t i = 1; i < table.size(); ++i) {
        table[i].cos = static_cast<i32>(Factor(params, static_cast<double>(i) * 0.001953125));
    }
    return table;
}

} // namespace

DibHandle RadialWarp(DibHandle source, const RadialWarpParams& params) {
    if (params.mode < kCone || params.mode > kFisheye ||
        (params.mode != kArcsineBulge && (params.intensity < 1 || params.intensity > 100))) {
        return 0;
    }
    const TurnTable factors = FactorTable(params);
    return RunKernel(source, Depths::GreyOrColour,
                     [&](const KernelRun& run) { return WarpEllipse(run, factors); });
}

DibHandle Cone(DibHandle source, i32 intensity) {
    return RadialWarp(source, {.mode = kCone, .intensity = intensity});
}

DibHandle ArcsineBulge(DibHandle source) {
    return RadialWarp(source, {.mode = kArcsineBulge, .intensity = 20});
}

DibHandle Fisheye(DibHandle source, i32 intensity) {
    return RadialWarp(source, {.mode = kFisheye, .intensity = intensity});
}

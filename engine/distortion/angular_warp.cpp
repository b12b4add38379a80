// Turns the picture about its centre, each ring by an angle of its own: Spiral turns the rim most,
// Whirlpool the centre.
#include "engine/distortion/distortion_kernels.h"
#include "engine/distortion/elliptical_warp.h"

#include <cmath>

namespace {

constexpr i32 kSpiral = 1;
constexpr i32 kWhirlpool = 2;
constexpr i32 kQuarterTurn = 3;
constexpr i32 kPullingQuarterTurn = 4;

Turn FixedPoint(double cos, double sin) {
    return {static_cast<i32>(cos), static_cast<i32>(sin)};
}

Turn TurnBy(double angle) {
    return FixedPoint(std::cos(angle) * kTurnUnit, std::sin(angle) * kTurnUnit);
}

Turn TurnAt(const AngularWarpParams& params, double radius) {
    switch (params.mode) {
    case kSpiral:
        return TurnBy(radius * params.intensity * 0.12566370600000001); // up to 2 full turns
    case kWhirlpool: {
        const double inward = radius - 1.0;
        return TurnBy(inward * inward * params.intensity * -0.06283185300000001); // up to 1
    }
    case kQuarterTurn: {
        // The radius is the tangent of half the angle.
        const double square = radius * radius;
        return FixedPoint((1.0 - square) * kTurnUnit / (1.0 + square),
                          radius * 32768.0 / (1.0 + square));
    }
    default: // a quarter turn that also draws the rim to the centre
        return FixedPoint((1.0 - radius) * kTurnUnit,
                          std::sqrt(2.0 * (1.0 - radius) * radius) * kTurnUnit);
    }
}

TurnTable TurnsOf(const AngularWarpParams& params) {
    TurnTable table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = TurnAt(params, std::sqrt(static_cast<double>(i) * 0.001953125));
    }
    return table;
}

} // namespace

DibHandle AngularWarp(DibHandle source, const AngularWarpParams& params) {
    if (params.mode < kSpiral || params.mode > kPullingQuarterTurn || params.intensity < 1 ||
        params.intensity > 100) {
        return 0;
    }
    const TurnTable turns = TurnsOf(params);
    return RunKernel(source, Depths::GreyOrColour,
                     [&](const KernelRun& run) { return WarpEllipse(run, turns); });
}

DibHandle Spiral(DibHandle source, i32 intensity) {
    return AngularWarp(source, {.mode = kSpiral, .intensity = intensity});
}

DibHandle Whirlpool(DibHandle source, i32 intensity) {
    return AngularWarp(source, {.mode = kWhirlpool, .intensity = intensity});
}

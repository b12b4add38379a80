// The warp that turns and scales each ring of the ellipse that touches a picture's four edges.
#pragma once

#include "engine/frame.h"

#include <array>

// A pixel's index tells how far out its ring is: the square of its elliptical radius, 0 at the
// centre, 512 on the ellipse and about 1024 in the corners.
constexpr i32 kRimIndex = 512;

// A fixed-point 1.0 in a turn.
constexpr double kTurnUnit = 16384.0;

// Where a ring gets its pixels: a pixel's offset from the centre, turned counter to the clock by
// an angle and scaled, in units of 1/16384.
struct Turn {
    i32 cos;
    i32 sin;
};

// One turn for each index inside the ellipse. That of the centre is not used: a pixel there counts
// as index 1.
using TurnTable = std::array<Turn, kRimIndex>;

// Writes all rows: pixels inside the ellipse come from where `turns` leads, brought to the nearest
// pixel of the picture; those outside stay.
WorkEnd WarpEllipse(const KernelRun& run, const TurnTable& turns,
                    RowRhythm rhythm = RowRhythm::EveryRow);

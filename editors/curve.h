// The curve of Magic Mirror: 256 values, edited by strokes of a pen and by presets.
#pragma once

#include "platform/types.h"

#include <array>
#include <optional>

using Curve = std::array<u8, 256>;

Curve IdentityCurve();

// By their places in the dialog's list.
enum class CurvePreset {
    Circle,
    Exponent,
    Logarithm,
    Sine,
    Arcsine,
    Square,
    Squareroot,
    Reset,
    Smooth
};

// Reset gives the identity and Smooth a moving mean. The others take the curve's values through a
// function: on the identity they give the shape that they name, on another curve they compose.
void ApplyPreset(Curve& curve, CurvePreset preset);

struct CurvePoint {
    u8 x;
    u8 y;
};

// The point of the curve below a place of a control whose client area is `width` x `height`, a
// frame of one pixel included; the top row is 255. Nothing outside of the frame's inside.
std::optional<CurvePoint> CurvePointAt(int x, int y, int width, int height);

// Draws a straight line from the last point of a stroke, which stays as it was, to the next.
void ContinueStroke(Curve& curve, CurvePoint last, CurvePoint next);

// The control in which a curve is drawn by mouse.
#pragma once

#include "editors/curve.h"
#include "platform/win32.h"

#include <span>

constexpr char kCurveWindowClass[] = "DrawCustom";

// What a curve window shows and edits. Its address is the window's user word; without one the
// window stays empty.
struct EditedCurve {
    Curve curve;
    std::span<u8, 256> copy; // brought in line at every step of the pen
};

// WM_COMMAND's notification code for the parent: the pen was lifted.
constexpr UINT kCurveDrawn = 1;

// Registered only as long as a dialog with such a control runs.
void RegisterCurveWindow(HINSTANCE instance);
void UnregisterCurveWindow(HINSTANCE instance);

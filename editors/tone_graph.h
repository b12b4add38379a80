// The graph of Tone Adjustment: the bars of a histogram and a tone curve, in a framed square.
#pragma once

#include "editors/histogram.h"
#include "platform/win32.h"

#include <array>

// The new value of each tone.
using ToneCurve = std::array<u8, kTones>;

// The size of a graph's window without its frame.
SIZE GraphInside(HWND graph);

// Makes a graph of another shape a square in the middle of its place.
void MakeGraphSquare(HWND graph);

// `client` is the client area of the graph. Without bars nothing is drawn.
void DrawToneBars(HDC dc, const BarTable& bars, const RECT& client);
void DrawToneCurve(HDC dc, const ToneCurve& curve, COLORREF color, const RECT& client);

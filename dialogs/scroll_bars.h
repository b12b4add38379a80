// Every scroll bar of every dialog: range, start, steps and label stand here and nowhere else.
#pragma once

#include "platform/win32.h"
#include <zq/document.h>

#include <optional>
#include <span>

// What sets a bar apart from the others.
enum class BarTrait {
    None,
    Percent,     // a "%" follows the number from the first move on; at opening the template's text
                 // stays
    WithoutEnds, // SB_TOP and SB_BOTTOM move nothing
};

struct ScrollBarRow {
    int dialog; // resource id of the template
    int bar;    // control id of the bar
    int label;  // control id of the static that shows the value
    int minimum;
    int maximum;
    int start;
    int line; // step of the arrows
    int page; // step of a click beside the thumb
    int zero; // the label shows the position less this
    BarTrait trait = BarTrait::None;
    EffectId effect = 0; // that the row is for alone; 0 for all effects without a row of their own
};

// The bars that a dialog has when it serves `effect`, in the order of its controls.
std::span<const ScrollBarRow> ScrollBarsOf(int dialog, EffectId effect);

// The row of a bar; null when the dialog does not have it.
const ScrollBarRow* FindScrollBar(int dialog, EffectId effect, int bar);

// Sets ranges, starts and labels of all bars of a dialog, without redraw.
void OpenScrollBars(HWND window, int dialog, EffectId effect);

// Carries a WM_HSCROLL message out: moves the bar and its label. False when nothing was to be done:
// a code that moves nothing, or a bar that the dialog does not have.
bool FollowScrollBar(HWND window, int dialog, EffectId effect, WPARAM wParam, LPARAM lParam);

// The two halves of it, for a dialog whose bars depend on each other. Where a scroll code takes a
// bar, before it is brought into the range; nothing for a code that moves nothing.
std::optional<int> ScrolledPosition(const ScrollBarRow& row, int position, WPARAM wParam);
// Brings a position into the range and moves the bar and its label there.
void MoveScrollBar(HWND window, const ScrollBarRow& row, int position);

int ScrollBarPosition(HWND window, int bar);

// The same less the bar's zero, for a bar that has one row.
int ScrollBarValue(HWND window, int dialog, int bar);

// Where such a bar stands at opening.
int ScrollBarStart(int dialog, int bar);

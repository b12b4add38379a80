// Every scroll bar of every dialog: range, start, steps and label stand here and nowhere else.
#pragma once

#include "platform/win32.h"

#include <span>

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
};

// The bars of a dialog, in the order of its controls.
std::span<const ScrollBarRow> ScrollBarsOf(int dialog);

// Sets ranges, starts and labels of all bars of a dialog, without redraw.
void OpenScrollBars(HWND window, int dialog);

// Carries a WM_HSCROLL message out: moves the bar and its label. False when nothing was to be done:
// a code that moves nothing, or a bar that the dialog does not have.
bool FollowScrollBar(HWND window, int dialog, WPARAM wParam, LPARAM lParam);

int ScrollBarPosition(HWND window, int bar);

// The order of a dialog's controls: its template's.
#pragma once

#include "platform/win32.h"

#include <vector>

// The dialog that handles the keys of a window: the one that it is or lies in, or where that is a
// control parent (WS_EX_CONTROLPARENT) within another dialog, that one.
HWND KeyDialogOf(HWND handle);

// A dialog's controls, with those of a control parent in its place.
std::vector<HWND> ControlsOf(HWND dialog);

// The control after (or before) `from` that Tab may go to, round the end; the first (or last) one
// when `from` is not in the dialog, and `from` itself when there is no other. Null without any.
HWND NextTabStop(HWND dialog, HWND from, bool backwards);

// The group that a control lies in: from one WS_GROUP to before the next.
std::vector<HWND> GroupOf(HWND control);

// The member of its group after (or before) `from` that can have the focus, round the end.
HWND NextInGroup(HWND from, bool backwards);

// Gives a control the focus as Tab does: what it holds as text is selected.
void FocusControl(HWND control);

// Whether the user can work it now.
bool IsUsable(HWND control);

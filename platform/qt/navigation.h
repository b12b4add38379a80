// The order of a dialog's controls: its template's.
#pragma once

#include "platform/win32.h"

#include <vector>

// The control after (or before) `from` that Tab may go to, round the end; the first (or last) one
// when `from` is not in the dialog, and `from` itself when there is no other. Null without any.
HWND NextTabStop(HWND dialog, HWND from, bool backwards);

// The group that a control lies in: from one WS_GROUP to before the next.
std::vector<HWND> GroupOf(HWND control);

// The member of its group after (or before) `from` that can have the focus, round the end.
HWND NextInGroup(HWND from, bool backwards);

// Whether the user can work it now.
bool IsUsable(HWND control);

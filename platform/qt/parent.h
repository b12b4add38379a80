// Who is whose child.
#pragma once

#include "platform/win32.h"

// Enters a child into its parent's list, as the last one.
void AddToParent(HWND handle);
void TakeFromParent(HWND handle);

// Moves a child behind one of its siblings, or to the front for null.
void MoveBehind(HWND handle, HWND sibling);

// Who is whose child.
#pragma once

#include "platform/win32.h"

// Enters a child into its parent's list, as the last one.
void AddToParent(HWND handle);
void TakeFromParent(HWND handle);

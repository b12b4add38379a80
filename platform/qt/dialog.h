// Dialog windows.
#pragma once

#include "platform/win32.h"

// The procedure of all dialogs: theirs first, then what every dialog does.
LRESULT DialogClassProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

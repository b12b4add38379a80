// For tests only.
#pragma once

#include "platform/win32.h"

// Presses and releases a key for GetAsyncKeyState alone; no window hears of it.
ZQ_API void PressKeyForTest(int virtualKey);

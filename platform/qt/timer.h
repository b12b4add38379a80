#pragma once

#include "platform/win32.h"

void KillTimersOf(HWND window);

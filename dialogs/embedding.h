// The tie between an effect dialog and an effect browser that shows it inside itself.
#pragma once

#include "platform/win32.h"

// The open browser; null while none is open, which is how a dialog knows that it runs by itself.
extern HWND browserWindow;

// Called at a dialog's OK: ends the open browser, if there is one, with 1.
void FinishEmbedded(HWND dialog);

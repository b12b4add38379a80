// What keys do in a dialog before its controls see them.
#pragma once

#include "platform/win32.h"

class QKeyEvent;

// True when the dialog, or nobody, is to have the key. `focus` is the window that it came to.
bool HandleDialogKey(HWND dialog, HWND focus, const QKeyEvent& event);

// Lets the push button with the focus be the one that Enter presses, else the dialog's own.
void UpdateDefaultButton(HWND focus);

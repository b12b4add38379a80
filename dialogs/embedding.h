// The tie between an effect dialog and an effect browser that shows it inside itself.
#pragma once

#include "platform/win32.h"

// The open browser; null while none is open, which is how a dialog knows that it runs by itself.
extern HWND browserWindow;

// The effect dialog that is now shown inside the browser. Whoever ends it takes it out of here
// first.
extern HWND embeddedDialog;

// Called by every effect dialog while it opens. With a browser open, the dialog loses its title bar
// and its buttons and becomes a part of the browser, which grows where it is too small for it.
void EmbedInBrowser(HWND dialog);

// Keys may still press the buttons that an embedded dialog has lost. They are the browser's: passes
// OK or Cancel on to it. False for a dialog that is to carry it out itself.
bool PassToBrowser(HWND dialog, int command);

// Leaves the focus to the browser's list, so that the user can go on choosing. False for a dialog
// that runs by itself.
bool LeaveFocusToBrowser(HWND dialog);

// Called at a dialog's OK: ends the open browser, if there is one, with 1.
void FinishEmbedded(HWND dialog);

// The Effect Browser: a list of effects, and the chosen one's dialog inside the browser.
//
// An embedded dialog is modal, as ever: it runs its own loop in the handler of the browser that
// opened it. Choosing another effect cancels it and opens the next one a loop deeper; none of the
// loops comes back before the browser ends, and then the innermost does first. The record of the
// accepted effect is saved at that moment, before the openers of cancelled dialogs come back.
#pragma once

#include "platform/types.h"
#include "platform/win32.h"
#include <zq/document.h>

// 1 when the accepted record was saved; 0 while only the effect has run that the browser opens
// with, for that one's opener writes straight to the caller.
extern i32 snapshotValid;

// What GetZQBrowserParam does when no other dialog is open.
i32 RunEffectBrowser(HWND parent, DocHandle document, i32* effectId, void* paramBuffer,
                     i32 bufferSize);

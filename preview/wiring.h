// Joins a dialog's two panes to its document and to each other.
#pragma once

#include "platform/win32.h"
#include <zq/document.h>

// Attaches the Before and the After pane of `dialog`, links them so that they zoom and pan
// together, and leaves `context` in the dialog's user word. The document's handle is the first or
// the second 32-bit word of the context, by effect. Nothing happens without a context and for an
// effect without a dialog.
void WirePreviews(HWND dialog, void* context, EffectId id);

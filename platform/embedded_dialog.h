// A modal dialog that becomes a part of another window.
#pragma once

#include "platform/win32.h"

#ifdef _WIN32

// Lets `frame` be worked while a dialog inside it runs its modal loop: enables it again, and takes
// the keys for it that the loop would take for the dialog's own.
void WorkWhileEmbedding(HWND frame);
// Called when the frame goes.
void EndEmbedding();

#else

// The layer's loops serve every window that is not disabled.
inline void WorkWhileEmbedding(HWND) {}
inline void EndEmbedding() {}

#endif

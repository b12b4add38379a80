// The key press that stopped a kernel.
#pragma once

#ifdef _WIN32

// Takes it out of this thread's queue, so that it does not cancel a dialog as well. Other keys that
// wait stay.
void DropEscapePress();

#else

// The layer has taken it when it answered GetAsyncKeyState.
inline void DropEscapePress() {}

#endif

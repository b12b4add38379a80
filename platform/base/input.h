// Slots through which the graphical platform supplies cursor and keyboard. Without one, cursors are
// null and no key is ever down, which is what a command-line program wants.
#pragma once

#include "platform/win32.h"

struct InputProvider {
    HCURSOR (*loadCursor)(HINSTANCE instance, LPCSTR name);
    HCURSOR (*setCursor)(HCURSOR cursor);
    HCURSOR (*getCursor)();
    SHORT (*asyncKeyState)(int virtualKey);
};

// `provider` must outlive the process; null takes the slots back. Gives the provider before.
ZQ_API const InputProvider* SetInputProvider(const InputProvider* provider);

// Cursors and keys from a provider instead of the system.
#include "platform/base/input.h"
#include "tests/support/windows/import_hooks.h"

#include <utility>

namespace {

const InputProvider* provider = nullptr;

HCURSOR WINAPI HookedLoadCursorA(HINSTANCE instance, LPCSTR name);
HCURSOR WINAPI HookedSetCursor(HCURSOR cursor);
HCURSOR WINAPI HookedGetCursor();
SHORT WINAPI HookedGetAsyncKeyState(int virtualKey);

HOOK_IMPORT("user32", LoadCursorA, 8)
HOOK_IMPORT("user32", SetCursor, 4)
HOOK_IMPORT("user32", GetCursor, 0)
HOOK_IMPORT("user32", GetAsyncKeyState, 4)

HCURSOR WINAPI HookedLoadCursorA(HINSTANCE instance, LPCSTR name) {
    return provider != nullptr ? provider->loadCursor(instance, name)
                               : SystemLoadCursorA(instance, name);
}

HCURSOR WINAPI HookedSetCursor(HCURSOR cursor) {
    return provider != nullptr ? provider->setCursor(cursor) : SystemSetCursor(cursor);
}

HCURSOR WINAPI HookedGetCursor() {
    return provider != nullptr ? provider->getCursor() : SystemGetCursor();
}

SHORT WINAPI HookedGetAsyncKeyState(int virtualKey) {
    return provider != nullptr ? provider->asyncKeyState(virtualKey)
                               : SystemGetAsyncKeyState(virtualKey);
}

} // namespace

const InputProvider* SetInputProvider(const InputProvider* next) {
    return std::exchange(provider, next);
}

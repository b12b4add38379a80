#include "platform/base/input.h"

#include <atomic>

namespace {

constinit std::atomic<const InputProvider*> currentProvider = nullptr;

const InputProvider* Provider() {
    return currentProvider.load(std::memory_order_acquire);
}

} // namespace

const InputProvider* SetInputProvider(const InputProvider* provider) {
    return currentProvider.exchange(provider, std::memory_order_acq_rel);
}

extern "C" {

HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name) {
    const InputProvider* provider = Provider();
    return provider == nullptr ? nullptr : provider->loadCursor(instance, name);
}

HCURSOR SetCursor(HCURSOR cursor) {
    const InputProvider* provider = Provider();
    return provider == nullptr ? nullptr : provider->setCursor(cursor);
}

HCURSOR GetCursor() {
    const InputProvider* provider = Provider();
    return provider == nullptr ? nullptr : provider->getCursor();
}

SHORT GetAsyncKeyState(int virtualKey) {
    const InputProvider* provider = Provider();
    return provider == nullptr ? SHORT{0} : provider->asyncKeyState(virtualKey);
}

} // extern "C"

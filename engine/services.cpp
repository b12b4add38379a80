#include "engine/engine.h"

#include "engine/vector/random_draws.h"
#include "platform/base/random_state.h"
#include "platform/win32.h"

i32 progressEnabled = 1;
ProgressHook progressHook = nullptr;
i32 abortEnabled = 1;
AbortHook abortHook = nullptr;

void ReportProgress(i32 percent) {
    if (progressEnabled != 0 && progressHook != nullptr) {
        progressHook(percent);
    }
}

i32 ShouldAbort() {
    if (abortEnabled == 0) {
        return 0;
    }
    if (abortHook != nullptr) {
        return abortHook();
    }
    return GetAsyncKeyState(VK_ESCAPE) != 0 ? 1 : 0;
}

i32 EngineRandom() {
    thread_local u32& state = RandomState(); // asked once: kernels draw for every pixel
    state = state * 214013u + 2531011u;
    return static_cast<i32>((state >> 16) & 0x7FFFu);
}

void PeekRandom(u16* numbers, std::size_t count) {
    DrawNumbers(RandomState(), numbers, count);
}

void TakeRandom(u16* numbers, std::size_t count) {
    u32& state = RandomState();
    state = DrawNumbers(state, numbers, count);
}

void SkipRandom(std::size_t count) {
    u32& state = RandomState();
    state = StateAfterDraws(state, count);
}

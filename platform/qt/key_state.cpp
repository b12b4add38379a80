#include "platform/qt/key_state.h"

#include "platform/qt/application.h"
#include "platform/qt/input_testing.h"
#include "platform/qt/key_pump.h"
#include "platform/qt/key_source_x11.h"

#include <QKeyEvent>

#include <chrono>

const KeyRow kKeys[] = {{VK_ESCAPE, Qt::Key_Escape, 0xFF1B}, {0, 0, 0}};

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kAskInterval = std::chrono::milliseconds(10);

struct KeyState {
    bool down = false;
    bool pressed = false; // and not asked about since
    u32 pressTime = 0;
    bool answered = false; // a program was told of the press at `answeredTime`
    u32 answeredTime = 0;
};

KeyState states[std::size(kKeys)];

KeyState* StateOf(int virtualKey) {
    for (std::size_t i = 0; kKeys[i].virtualKey != 0; ++i) {
        if (kKeys[i].virtualKey == virtualKey) {
            return &states[i];
        }
    }
    return nullptr;
}

// Questions come in the rhythm of pixel rows; the display is asked far more seldom.
bool TimeToLook() {
    static Clock::time_point next;
    const auto now = Clock::now();
    if (now < next) {
        return false;
    }
    next = now + kAskInterval;
    return true;
}

void Look() {
    if (!ReadX11Keys()) {
        PumpKeys();
    }
}

// Times of the display wrap.
bool NotAfter(u32 one, u32 other) {
    return static_cast<i32>(one - other) <= 0;
}

} // namespace

void NotePress(int virtualKey, u32 time) {
    if (KeyState* state = StateOf(virtualKey)) {
        state->down = true;
        state->pressed = true;
        state->pressTime = time;
    }
}

void NoteRelease(int virtualKey) {
    if (KeyState* state = StateOf(virtualKey)) {
        state->down = false;
    }
}

void UseUpPress(int virtualKey) {
    KeyState* state = StateOf(virtualKey);
    if (state == nullptr) {
        return;
    }
    SynchroniseX11Keys();
    *state = {};
}

bool WasAnswered(const QKeyEvent& event) {
    for (std::size_t i = 0; kKeys[i].virtualKey != 0; ++i) {
        KeyState& state = states[i];
        if (kKeys[i].qtKey != event.key() || !state.answered) {
            continue;
        }
        const auto time = static_cast<u32>(event.timestamp());
        if (event.isAutoRepeat() || (time != 0 && NotAfter(time, state.answeredTime))) {
            return true;
        }
        state.answered = false;
    }
    return false;
}

SHORT AskKeyState(int virtualKey) {
    KeyState* state = StateOf(virtualKey);
    if (state == nullptr || !OnGuiThread()) {
        return 0;
    }
    if (TimeToLook()) {
        Look();
    }
    const bool pressed = std::exchange(state->pressed, false);
    if (pressed) {
        state->answered = state->pressTime != 0;
        state->answeredTime = state->pressTime;
    }
    return static_cast<SHORT>((state->down ? 0x8000 : 0) | (pressed ? 1 : 0));
}

void PressKeyForTest(int virtualKey) {
    NotePress(virtualKey, 0);
    NoteRelease(virtualKey);
}

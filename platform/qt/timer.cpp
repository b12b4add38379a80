#include "platform/qt/timer.h"

#include "platform/qt/application.h"
#include "platform/qt/window.h"
#include "platform/qt/window_testing.h"
#include "platform/types.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

namespace {

constexpr UINT kShortestMilliseconds = 10;
constexpr UINT kLongestMilliseconds = 0x7FFFFFFF;

// Qt does not fire a timer again while its own handler runs, but a modal loop may run in there. So
// the handler only posts one event, and the message is sent from that.
struct Timer {
    u64 serial = 0;
    HWND window = nullptr;
    UINT_PTR id = 0;
    TIMERPROC procedure = nullptr;
    bool posted = false;
    QTimer clock;
};

std::vector<std::unique_ptr<Timer>>& Timers() {
    static auto& timers = *new std::vector<std::unique_ptr<Timer>>;
    return timers;
}

Timer* FindTimer(HWND window, UINT_PTR id) {
    for (const auto& timer : Timers()) {
        if (timer->window == window && timer->id == id) {
            return timer.get();
        }
    }
    return nullptr;
}

DWORD Milliseconds() {
    using namespace std::chrono;
    return static_cast<DWORD>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

void Fire(u64 serial) {
    for (const auto& timer : Timers()) {
        if (timer->serial != serial) {
            continue;
        }
        timer->posted = false;
        if (timer->procedure != nullptr) {
            timer->procedure(timer->window, WM_TIMER, timer->id, Milliseconds());
        } else if (timer->window != nullptr) {
            SendMessageA(timer->window, WM_TIMER, timer->id, 0);
        }
        return;
    }
}

void Post(Timer& timer) {
    if (!timer.posted) {
        timer.posted = PostCall([serial = timer.serial] { Fire(serial); }, Qt::LowEventPriority);
    }
}

UINT_PTR UnusedId() {
    static UINT_PTR last = 0;
    do {
        ++last;
    } while (FindTimer(nullptr, last) != nullptr);
    return last;
}

Timer* AddTimer(HWND window, UINT_PTR id) {
    auto timer = std::make_unique<Timer>();
    timer->window = window;
    timer->id = id;
    timer->clock.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer->clock, &QTimer::timeout, [made = timer.get()] { Post(*made); });
    return Timers().emplace_back(std::move(timer)).get();
}

} // namespace

void KillTimersOf(HWND window) {
    std::erase_if(Timers(), [window](const auto& timer) { return timer->window == window; });
}

std::size_t LiveTimerCount() {
    return Timers().size();
}

extern "C" {

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    if (!EnsureApplication() || (window != nullptr && FindWindowOf(window) == nullptr)) {
        return 0;
    }
    Timer* timer = FindTimer(window, id);
    if (timer == nullptr) {
        timer = AddTimer(window, window == nullptr ? UnusedId() : id);
    }
    static u64 lastSerial = 0;
    timer->serial = ++lastSerial; // what is posted already is not sent
    timer->posted = false;
    timer->procedure = procedure;
    timer->clock.start(
        static_cast<int>(std::clamp(milliseconds, kShortestMilliseconds, kLongestMilliseconds)));
    // A timer of a window may have the id 0, which would read as a failure.
    return timer->id == 0 ? 1 : timer->id;
}

BOOL KillTimer(HWND window, UINT_PTR id) {
    if (!OnGuiThread()) {
        return 0;
    }
    return std::erase_if(Timers(), [window, id](const auto& timer) {
               return timer->window == window && timer->id == id;
           }) != 0;
}

} // extern "C"

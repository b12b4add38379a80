#include "tools/stop_signals.h"

#include "tools/commands.h"
#include <zq/engine.h>

#include <csignal>
#include <unistd.h>

namespace {

volatile std::sig_atomic_t stopRequested = 0;
volatile std::sig_atomic_t writing = 0;

extern "C" void OnStopSignal(int) {
    if (stopRequested != 0 && writing == 0) {
        _exit(kStopped);
    }
    stopRequested = 1;
}

} // namespace

void CatchStopSignals() {
    struct sigaction action = {};
    action.sa_handler = OnStopSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        const bool ignored =
            sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN;
        // A program that was started to outlive its terminal does.
        if (signal != SIGHUP || !ignored) {
            sigaction(signal, &action, nullptr);
        }
    }
    // A file beyond the size that the system allows is then a failed write like any other.
    std::signal(SIGXFSZ, SIG_IGN);
    abortHook = [] { return static_cast<std::int32_t>(stopRequested); };
}

bool StopRequested() {
    return stopRequested != 0;
}

WritingGuard::WritingGuard() {
    writing = 1;
}

WritingGuard::~WritingGuard() {
    writing = 0;
}

#include "tools/stop_signals.h"

#include "platform/system/system.h"
#include "tools/commands.h"
#include <zq/engine.h>

#include <csignal>
#include <cstdlib>

namespace {

volatile std::sig_atomic_t stopRequested = 0;
volatile std::sig_atomic_t writing = 0;

extern "C" void OnStopSignal(int) {
    if (stopRequested != 0 && writing == 0) {
        std::_Exit(kStopped);
    }
    stopRequested = 1;
}

std::int32_t ZQ_CALL AnswerStopQuestion() {
    return stopRequested;
}

} // namespace

void CatchStopSignals() {
    CatchStopRequests(OnStopSignal);
    abortHook = AnswerStopQuestion;
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

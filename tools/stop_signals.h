// Ctrl-C and its relatives as a question that a kernel asks.
#pragma once

// From now on SIGINT, SIGTERM and SIGHUP are remembered instead of ending the program, and a
// running kernel stops. A second one ends it at once unless a file is being written.
void CatchStopSignals();

bool StopRequested();

// While it lives no signal ends the program: what is being written is finished.
class WritingGuard {
public:
    WritingGuard();
    ~WritingGuard();
    WritingGuard(const WritingGuard&) = delete;
    WritingGuard& operator=(const WritingGuard&) = delete;
};

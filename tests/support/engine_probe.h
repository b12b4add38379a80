// Sits in the engine's hooks and the cursor's slots while it lives, and records what comes by.
#pragma once

#include "engine/block.h"

#include <zq/engine.h>

#include <functional>
#include <vector>

class EngineProbe {
public:
    // What stands in the trace beside the percents, 0 to 100, of reports.
    static constexpr i32 kQuestion = -1;
    static constexpr i32 kBusyCursor = -2;
    static constexpr i32 kArrowCursor = -3;

    // One probe lives at a time.
    EngineProbe();
    ~EngineProbe();

    // Answers yes to question n, counted from 1 from the last Clear on, and to none else; 0 never.
    void StopAtQuestion(std::size_t n) { stopAt_ = n; }
    // Forgets what was recorded.
    void Clear() {
        trace_.clear();
        asked_ = 0;
    }

    const std::vector<i32>& Trace() const { return trace_; }
    std::size_t Questions() const;
    std::vector<i32> Reports() const;
    std::vector<i32> Cursors() const;

    EngineProbe(const EngineProbe&) = delete;
    EngineProbe& operator=(const EngineProbe&) = delete;

    void Note(i32 event) { trace_.push_back(event); }
    i32 Answer();

private:
    std::vector<i32> trace_;
    std::size_t stopAt_ = 0;
    std::size_t asked_ = 0;
    ProgressHook progressBefore_;
    AbortHook abortBefore_;
    const struct InputProvider* providerBefore_;
};

// The questions and reports that a call over `rows` rows makes: `ignored` questions, then one
// before each row with a report at every sixteenth, then the report of 100.
std::vector<i32> UsualRhythm(i32 rows, i32 ignored = 1);

// The whole trace of a kernel that keeps the usual rhythm, with its cursors.
std::vector<i32> UsualKernelTrace(i32 rows, i32 ignored = 1);

// Calls `run`, which gives a new DIB, once for each question that it asks and answers that question
// with yes. The first `ignored` answers must change nothing; each other one must end the call with
// 0, without a further question, with 100 as the last report, and with no block and no lock left.
void ExpectStopsAtEveryQuestion(const std::function<DibHandle()>& run, std::size_t ignored = 1);

// Calls `run` on a thread of its own, where the engine's random numbers start afresh.
void OnFreshThread(const std::function<void()>& run);

#include "tests/support/engine_probe.h"

#include "platform/base/input.h"
#include "tests/support/leak_guard.h"

#include <algorithm>
#include <thread>

namespace {

EngineProbe* current = nullptr;

void ZQ_CALL NoteReport(i32 percent) {
    current->Note(percent);
}

i32 ZQ_CALL NoteQuestion() {
    return current->Answer();
}

int busyCursor;
int arrowCursor;
HCURSOR shownCursor;

HCURSOR LoadFakeCursor(HINSTANCE, LPCSTR name) {
    return reinterpret_cast<HCURSOR>(name == IDC_WAIT ? &busyCursor : &arrowCursor);
}

HCURSOR ShowFakeCursor(HCURSOR cursor) {
    current->Note(cursor == LoadFakeCursor(nullptr, IDC_WAIT) ? EngineProbe::kBusyCursor
                                                              : EngineProbe::kArrowCursor);
    return std::exchange(shownCursor, cursor);
}

HCURSOR ShownFakeCursor() {
    return shownCursor;
}

SHORT NoKeyDown(int) {
    return 0;
}

constexpr InputProvider kFakeInput = {LoadFakeCursor, ShowFakeCursor, ShownFakeCursor, NoKeyDown};

std::vector<i32> Filtered(const std::vector<i32>& trace, bool (*keep)(i32)) {
    std::vector<i32> kept;
    std::copy_if(trace.begin(), trace.end(), std::back_inserter(kept), keep);
    return kept;
}

} // namespace

EngineProbe::EngineProbe()
    : progressBefore_(progressHook), abortBefore_(abortHook),
      providerBefore_(SetInputProvider(&kFakeInput)) {
    current = this;
    shownCursor = nullptr;
    progressHook = NoteReport;
    abortHook = NoteQuestion;
}

EngineProbe::~EngineProbe() {
    progressHook = progressBefore_;
    abortHook = abortBefore_;
    SetInputProvider(providerBefore_);
    current = nullptr;
}

i32 EngineProbe::Answer() {
    Note(kQuestion);
    return ++asked_ == stopAt_;
}

std::size_t EngineProbe::Questions() const {
    return static_cast<std::size_t>(std::count(trace_.begin(), trace_.end(), kQuestion));
}

std::vector<i32> EngineProbe::Reports() const {
    return Filtered(trace_, [](i32 event) { return event >= 0; });
}

std::vector<i32> EngineProbe::Cursors() const {
    return Filtered(trace_,
                    [](i32 event) { return event == kBusyCursor || event == kArrowCursor; });
}

std::vector<i32> UsualRhythm(i32 rows, i32 ignored) {
    std::vector<i32> rhythm(static_cast<std::size_t>(ignored), EngineProbe::kQuestion);
    for (i32 row = 0; row < rows; ++row) {
        rhythm.push_back(EngineProbe::kQuestion);
        if (row % 16 == 0) {
            rhythm.push_back(static_cast<i32>(i64{row} * 100 / rows));
        }
    }
    rhythm.push_back(100);
    return rhythm;
}

std::vector<i32> UsualKernelTrace(i32 rows, i32 ignored) {
    std::vector<i32> trace = UsualRhythm(rows, ignored);
    trace.insert(trace.begin(), EngineProbe::kBusyCursor);
    trace.push_back(EngineProbe::kArrowCursor);
    return trace;
}

void ExpectStopsAtEveryQuestion(const std::function<DibHandle()>& run, std::size_t ignored) {
    EngineProbe probe;
    FreeBlock(run());
    const std::size_t questions = probe.Questions();
    EXPECT_GT(questions, ignored) << "nothing asks";
    for (std::size_t n = 1; n <= questions; ++n) {
        SCOPED_TRACE(testing::Message() << "yes to question " << n << " of " << questions);
        const LeakGuard guard;
        probe.Clear();
        probe.StopAtQuestion(n);
        const OwnedBlock result(run());
        const bool stops = n > ignored;
        EXPECT_EQ(!result, stops);
        EXPECT_EQ(probe.Questions(), stops ? n : questions);
        const std::vector<i32> reports = probe.Reports();
        EXPECT_TRUE(!reports.empty() && reports.back() == 100);
    }
}

void OnFreshThread(const std::function<void()>& run) {
    std::thread(run).join();
}

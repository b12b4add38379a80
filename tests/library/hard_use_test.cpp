// What a host cannot be kept from doing: opening dialogs a thousand times, without memory, with
// anything in the buffer, while another one is open, and on any thread.
#include "dialogs/catalogue.h"
#include "dialogs/embedding.h"
#include "platform/qt/graphics_testing.h"
#include "platform/qt/window_testing.h"
#include "preview/preview_control.h"
#include "resources/resource.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/drive/drive.h"
#include <zq/zqui.h>

#include <cstdlib>
#include <deque>
#include <new>
#include <thread>

// Only in programs with the address sanitizer.
extern "C" [[gnu::weak]] std::size_t __sanitizer_get_current_allocated_bytes();

namespace {

// Of the allocations that may fail for want of memory, those that are not blocks.
int newsUntilFailure = 0;

} // namespace

void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return newsUntilFailure > 0 && --newsUntilFailure == 0 ? nullptr : ::operator new(bytes);
}

namespace {

constexpr int kEarlyOpenings = 4;   // until caches are filled
constexpr i64 kHeapSlack = 1 << 20; // for pictures that are drawn and cached anew
constexpr i32 kBrowserBytes = 16;
constexpr int kThresholdRow = 3; // in the browser's list
constexpr EffectId kThreshold = 7;

// ---- What lives ---------------------------------------------------------------------------------

struct LiveCounts {
    std::size_t windows, widgets, timers, classes, drawingObjects, contexts, blocks, locks;
    bool operator==(const LiveCounts&) const = default;
};

void PrintTo(const LiveCounts& live, std::ostream* out) {
    *out << live.windows << " windows, " << live.widgets << " widgets, " << live.timers
         << " timers, " << live.classes << " classes, " << live.drawingObjects
         << " drawing objects, " << live.contexts << " contexts, " << live.blocks << " blocks, "
         << live.locks << " locks";
}

LiveCounts CountLive() {
    RunPending();
    return {LiveWindowCount(),      LiveWidgetCount(),    LiveTimerCount(),
            RegisteredClassCount(), LiveGdiObjectCount(), LiveDeviceContextCount(),
            LiveBlockCount(),       LiveLockCount()};
}

// 0 where nobody counts.
i64 HeapBytes() {
    RunPending();
    return __sanitizer_get_current_allocated_bytes == nullptr
               ? 0
               : static_cast<i64>(__sanitizer_get_current_allocated_bytes());
}

// ---- Dialogs at full speed ----------------------------------------------------------------------

// Each is taken by a message from the loop of the dialog that is the innermost then. A step that
// opens a dialog comes back after the steps behind it.
std::deque<DialogScript> steps;

LRESULT CALLBACK TakeStep(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_USER || steps.empty()) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    const DialogScript step = steps.front();
    steps.pop_front();
    PostMessageA(window, WM_USER, 0, 0);
    step(FindWindowA("#32770", nullptr));
    return 0;
}

HWND StepTaker() {
    static const HWND taker = [] {
        WNDCLASSEXA taking{};
        taking.cbSize = sizeof(taking);
        taking.lpfnWndProc = TakeStep;
        taking.lpszClassName = "StepTaker";
        RegisterClassExA(&taking);
        return CreateWindowExA(0, "StepTaker", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                               nullptr);
    }();
    return taker;
}

template <class Open>
i32 WithSteps(std::deque<DialogScript> taken, const Open& open) {
    steps = std::move(taken);
    PostMessageA(StepTaker(), WM_USER, 0, 0);
    const i32 result = open();
    EXPECT_TRUE(steps.empty()) << "it never came up or ended early";
    steps.clear();
    return result;
}

i32 Open(EffectId effect, const TestDocument& document, CallerBuffer& buffer, DialogScript step) {
    return WithSteps({std::move(step)}, [&] {
        return GetZQParam(effect, nullptr, document.Handle(), buffer.words.data());
    });
}

void ChooseThreshold(HWND browser) {
    SendDlgItemMessageA(browser, IDC_EFFECT_LIST, CB_SETCURSEL, kThresholdRow, 0);
    SendMessageA(browser, WM_COMMAND, MAKEWPARAM(IDC_EFFECT_LIST, CBN_SELCHANGE), 0);
}

i32 Browse(const TestDocument& document, CallerBuffer& buffer, std::deque<DialogScript> taken) {
    return WithSteps(std::move(taken), [&] {
        i32 effect = 0;
        const i32 result = GetZQBrowserParam(nullptr, document.Handle(), &effect,
                                             buffer.words.data(), kBrowserBytes);
        EXPECT_EQ(effect, kThreshold);
        return result;
    });
}

// The tick that brings the After picture, and a paint of both panes.
void ShowPictures(HWND dialog) {
    for (const int id : {kBeforePaneId, kAfterPaneId}) {
        const HWND pane = GetDlgItem(dialog, id);
        SendMessageA(pane, WM_TIMER, kPreviewTimer, 0);
        const HWND picture = PreviewControlOf(pane)->imageWindow;
        InvalidateRect(picture, nullptr, FALSE);
        UpdateWindow(picture);
    }
}

void ShowPicturesAndPressOk(HWND dialog) {
    ShowPictures(embeddedDialog == nullptr ? dialog : embeddedDialog);
    PressOk(dialog);
}

class HardUse : public DialogTest {
protected:
    static void SetUpTestSuite() {
        DialogTest::SetUpTestSuite();
        // What stays for good comes at the first use.
        const TestDocument document(8, 8);
        CallerBuffer buffer;
        for (const EffectRow& row : EffectCatalogue()) {
            EXPECT_EQ(Open(row.id, document, buffer, ShowPicturesAndPressOk), 1) << row.title;
        }
    }

    HardUse() { StepTaker(); }
};

// ---- Faults -------------------------------------------------------------------------------------

// Whichever block cannot be had, a person goes on and the record is whole: a pane without memory
// keeps the picture that it has.
TEST_F(HardUse, DialogsWorkWhicheverAllocationFails) {
    const LiveCounts before = CountLive();
    const auto expectAnswers = [&](const std::function<i32(CallerBuffer&)>& open) {
        CallerBuffer expected;
        EXPECT_EQ(open(expected), 1);
        CallerBuffer buffer;
        i32 result = 0;
        const std::size_t allocations = FailEachAllocation(
            [&] {
                buffer = {};
                result = open(buffer);
            },
            [&](bool) {
                EXPECT_EQ(result, 1);
                EXPECT_EQ(buffer.words, expected.words);
                EXPECT_EQ(CountLive(), before);
            });
        EXPECT_GE(allocations, 18u) << "two panes were cropped twice, worked on and painted";
    };
    for (const EffectRow& row : EffectCatalogue()) {
        SCOPED_TRACE(row.title);
        expectAnswers([&](CallerBuffer& buffer) {
            return Open(row.id, colour_, buffer, ShowPicturesAndPressOk);
        });
    }
    SCOPED_TRACE("the browser");
    expectAnswers([&](CallerBuffer& buffer) {
        return Browse(colour_, buffer, {ChooseThreshold, ShowPicturesAndPressOk});
    });
}

TEST_F(HardUse, ADialogWithoutMemoryForItsPanesIsNotOpened) {
    const LiveCounts before = CountLive();
    for (const EffectRow& row : EffectCatalogue()) {
        SCOPED_TRACE(row.title);
        const bool writesEarly =
            row.written == RecordWritten::Live || row.written == RecordWritten::AtOpeningAndOk;
        for (const int failing : {1, 2}) {
            CallerBuffer buffer;
            newsUntilFailure = failing;
            EXPECT_EQ(GetZQParam(row.id, nullptr, colour_.Handle(), buffer.words.data()),
                      writesEarly ? -2 : 0);
            EXPECT_EQ(newsUntilFailure, 0);
            EXPECT_EQ(CountLive(), before);
        }
    }
}

// ---- Counts -------------------------------------------------------------------------------------

TEST_F(HardUse, AThousandOpeningsLeaveNothingBehind) {
    const int openings = std::getenv("ZQ_LONG") != nullptr ? 1000 : 20;
    const LiveCounts before = CountLive();
    i64 growth = 0;
    for (const EffectRow& row : EffectCatalogue()) {
        SCOPED_TRACE(row.title);
        CallerBuffer buffer;
        i64 early = 0;
        for (int i = 0; i < openings && !HasFailure(); ++i) {
            EXPECT_EQ(Open(row.id, colour_, buffer, i % 2 == 0 ? PressCancel : PressOk), i % 2);
            early = i == kEarlyOpenings ? HeapBytes() : early;
        }
        EXPECT_EQ(CountLive(), before);
        growth += HeapBytes() - early;
    }
    for (int i = 0; i < openings && !HasFailure(); ++i) {
        CallerBuffer buffer;
        EXPECT_EQ(Browse(colour_, buffer, {ChooseThreshold, i % 2 == 0 ? PressCancel : PressOk}),
                  i % 2);
    }
    EXPECT_EQ(CountLive(), before);
    EXPECT_LT(growth, kHeapSlack) << "something is kept of every dialog";
}

// ---- Buffers ------------------------------------------------------------------------------------

// No dialog takes anything from the caller's buffer but Maximum and Minimum their choice.
TEST_F(HardUse, WhatABufferHoldsMovesNoControl) {
    for (const EffectRow& row : EffectCatalogue()) {
        SCOPED_TRACE(row.title);
        std::vector<std::vector<i32>> records;
        for (const i32 word : {0, -1, INT32_MIN, INT32_MAX}) {
            CallerBuffer buffer;
            buffer.words.fill(word);
            EXPECT_EQ(Open(row.id, colour_, buffer, ShowPicturesAndPressOk), 1);
            std::vector<i32> record = buffer.First(row.recordBytes / sizeof(i32));
            if (row.id == 20 || row.id == 37) {
                record.pop_back(); // the caller's own word
            }
            records.push_back(record);
        }
        EXPECT_EQ(records, std::vector(records.size(), records[0]));
    }
}

// ---- A second call ------------------------------------------------------------------------------

// Every call gives 0 at once, and opens and writes nothing.
void ExpectRefusal(const TestDocument& document) {
    const std::size_t windows = LiveWindowCount();
    CallerBuffer buffer;
    i32 effect = kUntouched;
    for (const EffectRow& row : EffectCatalogue()) {
        EXPECT_EQ(GetZQParam(row.id, nullptr, document.Handle(), buffer.words.data()), 0);
    }
    EXPECT_EQ(GetZQParam(3, nullptr, document.Handle(), buffer.words.data()), -2);
    EXPECT_EQ(GetZQBrowserParam(nullptr, document.Handle(), &effect, buffer.words.data(), 16), 0);
    EXPECT_EQ(buffer.words, CallerBuffer().words);
    EXPECT_EQ(effect, kUntouched);
    EXPECT_EQ(LiveWindowCount(), windows);
}

// Where not every thread may show windows.
void ExpectRefusalOnAnotherThread(const TestDocument& document) {
    std::thread([&] {
        if (!IsGUIThread(TRUE)) {
            ExpectRefusal(document);
            EXPECT_EQ(GetZquiBackgroundSetting(1, 2, 3), 0);
        }
    }).join();
}

TEST_F(HardUse, ASecondCallIsRefusedAndTheFirstGoesOn) {
    const LiveCounts before = CountLive();
    const auto disturb = [&](HWND) {
        ExpectRefusal(colour_);
        ExpectRefusalOnAnotherThread(colour_);
    };
    for (const EffectRow& row : EffectCatalogue()) {
        SCOPED_TRACE(row.title);
        CallerBuffer alone, disturbed;
        EXPECT_EQ(Open(row.id, colour_, alone, ShowPicturesAndPressOk), 1);
        EXPECT_EQ(Open(row.id, colour_, disturbed,
                       [&](HWND dialog) {
                           disturb(dialog);
                           ShowPicturesAndPressOk(dialog);
                       }),
                  1);
        EXPECT_EQ(disturbed.words, alone.words);
    }
    CallerBuffer browsed;
    EXPECT_EQ(Browse(colour_, browsed, {disturb, ChooseThreshold, disturb, PressOk}), 1);
    EXPECT_EQ(browsed.words[0], 128);
    ExpectRefusalOnAnotherThread(colour_);
    EXPECT_EQ(CountLive(), before);
}

// With WithDialog's own timer as the host's.
TEST_F(HardUse, ATimerOfTheHostMayCallAtAnyTime) {
    CallerBuffer buffer;
    const i32 result = RunEffectDialog(1, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
        ExpectRefusal(colour_);
        Scroll(dialog, 4263, SB_LINEDOWN);
        PressOk(dialog);
    });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(buffer.First(3), (std::vector<i32>{0, 1, 0}));
}

} // namespace

#include "dialogs/catalogue.h"
#include "dialogs/embedding.h"
#include "library/effect_browser.h"
#include "library/startup.h"
#include "platform/qt/window_testing.h"
#include "resources/module.h"
#include "resources/resource.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/drive/drive.h"
#include "tests/support/document_maker.h"
#include "tests/support/leak_guard.h"
#include <zq/zqui.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace {

using Journal = std::vector<std::string>;
using Step = std::function<void(HWND browser)>;

constexpr UINT kLookEvery = 5; // milliseconds
constexpr int kMostLooks = 2000;
constexpr std::size_t kBufferWords = 250;
constexpr int kRowCount = 28;

// Every dialog that opens and what it ends with, in order.
Journal journal;
// Called when a dialog has ended, before its opener comes back.
std::function<void(int dialog)> afterDialog;

std::vector<Step> steps;
std::size_t nextStep = 0;
bool awaitsFirstEffect = true;
int looks = 0;

// Takes the next step as soon as the loop turns: a step that opens a dialog does not come back
// before that one ends, and the steps after it are taken from inside its loop.
void CALLBACK TakeStep(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND browser = FindWindowA("#32770", "Effect Browser");
    const bool shown = browser != nullptr && IsWindowVisible(browser) != 0;
    const bool ready = shown && (!awaitsFirstEffect || embeddedDialog != nullptr);
    if (ready && nextStep < steps.size()) {
        looks = 0;
        const Step step = steps[nextStep++];
        step(browser);
    } else if (++looks > kMostLooks) {
        KillTimer(nullptr, timer);
        ADD_FAILURE() << "the browser did not come up or did not end";
        PressCancel(browser);
    }
}

Step Choose(int row) {
    return [row](HWND browser) {
        SendDlgItemMessageA(browser, IDC_EFFECT_LIST, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
        SendMessageA(browser, WM_COMMAND, MAKEWPARAM(IDC_EFFECT_LIST, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(GetDlgItem(browser, IDC_EFFECT_LIST)));
    };
}

Step ScrollTo(int bar, int position) {
    return [=](HWND) { Scroll(embeddedDialog, bar, SB_THUMBPOSITION, position); };
}

Step Press(int key, int modifier = kNoModifier) {
    return [=](HWND) { TypeKey(key, modifier); };
}

// One call: what goes in, and what comes out.
struct Browsed {
    i32 bufferSize = 16;
    DocHandle document = 0;
    bool waits = true; // for the first effect, before the first step

    i32 result = -99;
    i32 effect = kUntouched;
    std::vector<i32> words = std::vector<i32>(kBufferWords, kUntouched);

    std::vector<i32> First(std::size_t count) const {
        return {words.begin(), words.begin() + static_cast<std::ptrdiff_t>(count)};
    }
};

class EffectBrowser : public DialogTest {
protected:
    static void SetUpTestSuite() {
        DialogTest::SetUpTestSuite();
        const TestDocument document(8, 8); // brings up what stays for good
        i32 record[3];
        RunEffectDialog(1, document.Handle(), record, PressCancel);
    }

    EffectBrowser() {
        journal.clear();
        WatchDialogs({[](int dialog) { journal.push_back(std::to_string(dialog) + " opens"); },
                      [](int dialog, INT_PTR result) {
                          // What comes of a dialog whose window went first is the platform's own.
                          journal.push_back(std::to_string(dialog) +
                                            (result > 0 ? " is accepted" : " is cancelled"));
                          if (afterDialog) {
                              afterDialog(dialog);
                          }
                      }});
    }
    ~EffectBrowser() override {
        afterDialog = nullptr;
        WatchDialogs({});
    }

    void Browse(Browsed& browsed, std::vector<Step> script) {
        steps = std::move(script);
        awaitsFirstEffect = browsed.waits;
        nextStep = 0;
        looks = 0;
        const UINT_PTR timer = SetTimer(nullptr, 0, kLookEvery, TakeStep);
        browsed.result = GetZQBrowserParam(nullptr, browsed.document, &browsed.effect,
                                           browsed.words.data(), browsed.bufferSize);
        KillTimer(nullptr, timer);
        EXPECT_EQ(nextStep, steps.size()) << "the browser ended early";
        EXPECT_EQ(browserWindow, nullptr);
        EXPECT_EQ(embeddedDialog, nullptr);
    }

    Browsed Browse(std::vector<Step> script) {
        Browsed browsed{.document = colour_.Handle()};
        Browse(browsed, std::move(script));
        return browsed;
    }
};

// What a call gives, whether it took a snapshot, and the first words of the record.
struct Outcome {
    i32 result;
    i32 effect;
    i32 snapshotValid;
    std::vector<i32> words;
};

TEST_F(EffectBrowser, GivesTheEffectAndItsRecordBack) {
    const Step backToCancel = Press(kKeyTab, kShift); // from the list
    const Step focusEmbedded = [](HWND) { SetFocus(GetDlgItem(embeddedDialog, 4263)); };
    const Step close = [](HWND browser) { PressCloseBox(browser); };
    const struct {
        const char* name;
        std::vector<Step> steps;
        Outcome outcome;
    } kTable[] = {
        {"OK at once", {PressOk}, {1, 1, 0, {0, 0, 0, kUntouched}}},
        {"the first effect changed",
         {ScrollTo(4265, 200), PressOk},
         {1, 1, 0, {0, 0, 72, kUntouched}}},
        {"one change", {Choose(3), ScrollTo(4263, 77), PressOk}, {1, 7, 1, {77, kUntouched}}},
        {"five changes",
         {Choose(2), ScrollTo(4263, 99), Choose(3), Choose(0), Choose(2), Choose(11),
          ScrollTo(4280, 33), PressOk},
         {1, 22, 1, {1, 0, 33, kUntouched}}},
        {"back to an effect that was left",
         {Choose(2), ScrollTo(4263, 99), Choose(11), Choose(2), ScrollTo(4263, 44), PressOk},
         {1, 4, 1, {0, 44, 128}}},
        {"back to the first",
         {Choose(3), Choose(0), ScrollTo(4263, 129), PressOk},
         {1, 1, 1, {0, 1, 0, kUntouched}}},
        {"Cancel at once", {PressCancel}, {0, 1, 0, {kUntouched}}},
        {"changes, then Cancel",
         {Choose(3), Choose(2), ScrollTo(4263, 66), PressCancel},
         {0, 4, 0, {0, 66, kUntouched}}},
        {"the OK that an embedded dialog has lost",
         {Choose(3), [](HWND) { PressOk(embeddedDialog); }},
         {1, 7, 1, {128}}},
        {"the Cancel that an embedded dialog has lost",
         {Choose(3), [](HWND) { PressCancel(embeddedDialog); }},
         {0, 7, 0, {kUntouched}}},
        {"Enter on Cancel", {backToCancel, Press(kKeyEnter)}, {0, 1, 0, {kUntouched}}},
        {"Enter in the dialog after Cancel had the focus",
         {backToCancel, Press(kKeyTab), Press(kKeyTab), Press(kKeyEnter)},
         {1, 1, 0, {0, 0, 0, kUntouched}}},
        {"down and up the list",
         {Press(kKeyDown), Press(kKeyDown), Press(kKeyDown), Press(kKeyUp), Press(kKeyEnter)},
         {1, 4, 1, {0, 8, kUntouched}}},
        {"the end of the list", {Press(kKeyEnd), Press(kKeyEnter)}, {1, 65, 1, {25, 25, 0}}},
        {"a timer message when the first effect is there",
         {[](HWND browser) { SendMessageA(browser, WM_TIMER, 0, 0); }, ScrollTo(4263, 130),
          PressOk},
         {1, 1, 0, {0, 2, 0, kUntouched}}},
        {"the title bar", {focusEmbedded, close}, {0, 1, 0, {kUntouched}}},
    };
    for (const auto& row : kTable) {
        SCOPED_TRACE(row.name);
        const Browsed browsed = Browse(row.steps);
        const auto& [result, effect, snapshot, words] = row.outcome;
        EXPECT_EQ(browsed.result, result);
        EXPECT_EQ(browsed.effect, effect);
        EXPECT_TRUE(result == 0 || snapshotValid == snapshot);
        EXPECT_EQ(browsed.First(words.size()), words);
    }
}

TEST_F(EffectBrowser, MayBeWorkedBeforeItsFirstEffectIsThere) {
    Browsed atOnce{.document = colour_.Handle(), .waits = false};
    Browse(atOnce, {PressOk});
    EXPECT_EQ(atOnce.result, 1);
    EXPECT_EQ(atOnce.effect, 1);
    EXPECT_EQ(journal.size(), 2u);

    Browsed changed{.document = colour_.Handle(), .waits = false};
    bool early = false;
    const Step choose = Choose(3);
    Browse(changed, {[&](HWND browser) {
                         early = embeddedDialog == nullptr;
                         choose(browser);
                     },
                     PressOk});
    EXPECT_EQ(changed.effect, 7);
    EXPECT_EQ(changed.words[0], 128);
    // Unless this machine was too busy the first effect never came.
    EXPECT_EQ(journal.size(), early ? 6u : 8u);
}

TEST_F(EffectBrowser, BringsBackAsMuchOfTheRecordAsTheBufferIsSaidToHold) {
    const struct {
        i32 bufferSize;
        std::size_t words; // that survive an opener that comes back late
    } kTable[] = {{8, 2}, {0, 0}, {-1, 0}, {300, 75}, {1000, 75}};
    for (const auto& row : kTable) {
        SCOPED_TRACE(row.bufferSize);
        Browsed browsed{.bufferSize = row.bufferSize, .document = colour_.Handle()};
        afterDialog = [&](int dialog) {
            if (dialog == IDD_BRIGHTNESS_CONTRAST) {
                std::ranges::fill(browsed.words, -1);
            }
        };
        Browse(browsed, {Choose(11), PressOk});
        EXPECT_EQ(browsed.result, 1);
        std::vector<i32> expected(kBufferWords, kUntouched);
        const i32 record[] = {1, 0, 128};
        std::ranges::copy(record, expected.begin());
        std::fill(expected.begin() + static_cast<std::ptrdiff_t>(row.words), expected.end(), -1);
        EXPECT_EQ(browsed.words, expected);
    }
}

TEST_F(EffectBrowser, UnwindsTheInnermostDialogFirst) {
    for (const bool accept : {true, false}) {
        journal.clear();
        Browse({Choose(2), Choose(3), accept ? PressOk : PressCancel});
        Journal expected = {"4386 opens", "4341 opens", "4344 opens", "4345 opens"};
        const std::string end = accept ? " is accepted" : " is cancelled";
        expected.insert(expected.end(),
                        {"4345" + end, "4344 is cancelled", "4341 is cancelled", "4386" + end});
        EXPECT_EQ(journal, expected);
    }
}

// Where the window is, within the browser's client area.
RECT PlaceIn(HWND browser, HWND window) {
    RECT rect;
    GetWindowRect(window, &rect);
    POINT origin = {0, 0};
    ClientToScreen(browser, &origin);
    OffsetRect(&rect, -origin.x, -origin.y);
    return rect;
}

void ExpectWithin(const RECT& inner, const RECT& outer) {
    EXPECT_GE(inner.left, outer.left);
    EXPECT_GE(inner.top, outer.top);
    EXPECT_LE(inner.right, outer.right);
    EXPECT_LE(inner.bottom, outer.bottom);
}

void ExpectEmbeddedWhole(HWND browser) {
    ASSERT_NE(embeddedDialog, nullptr);
    EXPECT_EQ(GetParent(embeddedDialog), browser);
    EXPECT_TRUE(IsWindowVisible(embeddedDialog));
    RECT client;
    GetClientRect(browser, &client);
    const RECT dialog = PlaceIn(browser, embeddedDialog);
    const RECT frame = PlaceIn(browser, GetDlgItem(browser, IDC_EFFECT_FRAME));
    ExpectWithin(dialog, frame);
    EXPECT_EQ(dialog.left, frame.left + 3);
    EXPECT_EQ(dialog.top, frame.top + 10);
    ExpectWithin(frame, client);
    for (int button : {IDOK, IDCANCEL}) {
        ExpectWithin(PlaceIn(browser, GetDlgItem(browser, button)), client);
        EXPECT_FALSE(IsWindowVisible(GetDlgItem(embeddedDialog, button)));
        EXPECT_EQ(TextOf(embeddedDialog, button), "");
    }
}

// The names of the list that differ from the titles of their dialogs.
const std::map<std::string, std::string> kOtherTitles = {
    {"Guassian Blur", "Gaussian Blur"}, {"MotionBlur", "Motion Blur"}, {"Fish Eye", "Fisheye"}};

TEST_F(EffectBrowser, ShowsEveryEffectOfItsListWholeInItsFrame) {
    Browsed browsed{.document = colour_.Handle()};
    std::size_t othersSeen = 0;
    std::vector<Step> script;
    for (int row = kRowCount - 1; row >= 0; --row) {
        script.push_back(Choose(row));
        script.push_back([&](HWND browser) {
            const std::string text = TextOf(browser, IDC_EFFECT_LIST);
            SCOPED_TRACE(text);
            const EffectRow* effect = FindEffectRow(browsed.effect);
            ASSERT_NE(effect, nullptr);
            ExpectEmbeddedWhole(browser);
            const auto other = kOtherTitles.find(text);
            othersSeen += other == kOtherTitles.end() ? 0u : 1u;
            EXPECT_EQ(TitleOf(embeddedDialog), other == kOtherTitles.end() ? text : other->second);
            EXPECT_EQ(journal.back(), std::to_string(effect->dialog) + " opens");
        });
    }
    script.push_back(Choose(kRowCount)); // there is none
    script.push_back(PressOk);
    Browse(browsed, std::move(script));
    EXPECT_EQ(browsed.effect, 1);
    EXPECT_EQ(othersSeen, kOtherTitles.size());
}

TEST_F(EffectBrowser, TellsMaximumFromMinimumWhereTheBufferHasRoomForIt) {
    const struct {
        int row;
        i32 bufferSize;
        i32 word;
        const char* title;
    } kTable[] = {
        {7, 8, 1, "Maximum"},
        {9, 8, 0, "Minimum"},
        {9, 7, kUntouched, "Maximum"},
    };
    for (const auto& row : kTable) {
        SCOPED_TRACE(testing::Message() << "row " << row.row << ", " << row.bufferSize);
        Browsed browsed{.bufferSize = row.bufferSize, .document = colour_.Handle()};
        std::string title;
        Browse(browsed, {Choose(row.row), [&](HWND) { title = TitleOf(embeddedDialog); }, PressOk});
        EXPECT_EQ(title, row.title);
        EXPECT_EQ(browsed.effect, 20);
        EXPECT_EQ(browsed.First(3), (std::vector<i32>{3, row.word, kUntouched}));
    }
}

TEST_F(EffectBrowser, LetsTabRunThroughTheListTheDialogAndTheButtons) {
    const int kStops[] = {IDC_EFFECT_LIST, 4263, 4265, 4266, IDOK, IDCANCEL, IDC_EFFECT_LIST};
    Browse({[&](HWND browser) {
                for (int stop : kStops) {
                    EXPECT_EQ(GetDlgCtrlID(GetFocus()), stop);
                    const bool atCancel = stop == IDCANCEL;
                    const HWND byEnter = GetDlgItem(browser, atCancel ? IDCANCEL : IDOK);
                    EXPECT_NE(SendMessageA(byEnter, 135, 0, 0) & 0x10, 0) << "not the default";
                    TypeKey(kKeyTab);
                }
                for (std::size_t i = std::size(kStops); i-- > 0;) {
                    TypeKey(kKeyTab, kShift);
                    EXPECT_EQ(GetDlgCtrlID(GetFocus()), kStops[i]);
                }
                SetFocus(browser);
                EXPECT_EQ(GetDlgCtrlID(GetFocus()), IDC_EFFECT_LIST);
            },
            PressCancel});
}

TEST_F(EffectBrowser, LeavesNothingBehind) {
    const std::size_t classes = RegisteredClassCount();
    for (const Step& last : {Step(PressOk), Step(PressCancel)}) {
        const LeakGuard guard;
        Browse({Choose(3), Choose(11), last});
        RunPending();
        EXPECT_EQ(LiveWindowCount() + LiveTimerCount(), 0u);
        EXPECT_EQ(RegisteredClassCount(), classes);
        EXPECT_EQ(LiveWidgetCount(), 0u);
    }
    i32 record[3];
    RunEffectDialog(1, colour_.Handle(), record, [](HWND dialog) {
        EXPECT_EQ(TitleOf(dialog), "Brightness and Contrast");
        EXPECT_EQ(GetParent(dialog), nullptr);
        EXPECT_EQ(TextOf(dialog, IDOK), "&OK");
        EXPECT_TRUE(IsWindowVisible(GetDlgItem(dialog, IDOK)));
        EXPECT_TRUE(IsWindowVisible(GetDlgItem(dialog, IDCANCEL)));
        EXPECT_NE(GetWindowLongPtrA(dialog, GWL_STYLE) & WS_CAPTION, 0);
    });
}

TEST_F(EffectBrowser, DoesNoHarmWithoutPlacesToWriteToOrADocument) {
    i32 effect = kUntouched;
    i32 words[4] = {kUntouched};
    EXPECT_EQ(GetZQBrowserParam(nullptr, colour_.Handle(), nullptr, words, 16), 0);
    EXPECT_EQ(GetZQBrowserParam(nullptr, colour_.Handle(), &effect, nullptr, 16), 0);
    EXPECT_TRUE(journal.empty());

    Browsed withoutDocument{.waits = false};
    Browse(withoutDocument,
           {Choose(3),
            [&](HWND) {
                EXPECT_EQ(embeddedDialog, nullptr);
                EXPECT_EQ(GetZQBrowserParam(nullptr, colour_.Handle(), &effect, words, 16), 0)
                    << "a second browser";
            },
            PressCancel});
    EXPECT_EQ(withoutDocument.result, 0);
    EXPECT_EQ(journal.size(), 2u);
    Browsed staleDocument{.document = 0x7FFF0001};
    Browse(staleDocument, {Choose(3), PressOk});
    EXPECT_EQ(staleDocument.words[0], 128);
}

} // namespace

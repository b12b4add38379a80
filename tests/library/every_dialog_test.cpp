#include "dialogs/catalogue.h"
#include "dialogs/embedding.h"
#include "platform/qt/window_testing.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/drive/drive.h"
#include <zq/zqui.h>

#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kMostStops = 60;
constexpr int kArrowMargin = 4; // from a bar's end to the middle of its arrow

std::string ClassOf(HWND window) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof(name));
    return name;
}

// Moves the focus on with Tab until it is on a bar, or on an edit where there is no bar, or back
// where it was.
HWND TabToControl() {
    for (const char* wanted : {"ScrollBar", "Edit"}) {
        const HWND first = GetFocus();
        for (int i = 0; i < kMostStops; ++i) {
            if (ClassOf(GetFocus()) == wanted) {
                return GetFocus();
            }
            TypeKey(kKeyTab);
            if (GetFocus() == first) {
                break;
            }
        }
    }
    return GetFocus();
}

void ChangeByKeyboard(HWND) {
    const std::string kind = ClassOf(TabToControl());
    if (kind == "Edit") {
        TypeKey('7');
    } else {
        TypeKey(kind == "ScrollBar" ? kKeyPageDown : kKeyDown);
    }
}

// The same control as by keyboard: a bar's arrow, an edit's text or the next button of a group.
void ChangeByMouse(HWND dialog) {
    const HWND control = TabToControl();
    const std::string kind = ClassOf(control);
    const POINT middle = MiddleOf(control);
    if (kind == "ScrollBar") {
        ClickMouse(control, {2 * middle.x - kArrowMargin, middle.y});
    } else if (kind == "Edit") {
        ClickMouse(control, middle);
        TypeKey('7');
    } else {
        const HWND next = GetDlgItem(dialog, GetDlgCtrlID(control) + 1);
        ClickMouse(next, MiddleOf(next));
    }
}

void ClickOk(HWND dialog) {
    const HWND ok = GetDlgItem(dialog, IDOK);
    ClickMouse(ok, MiddleOf(ok));
}

void TypeEnter(HWND) {
    TypeKey(kKeyEnter);
}

void TypeEscape(HWND) {
    TypeKey(kKeyEscape);
}

void TypeMnemonicOfOk(HWND) {
    TypeKey('O', kAlt);
}

// A person's two moves in a dialog.
struct Visit {
    const char* name;
    DialogScript change;
    DialogScript end;
    i32 result;
    bool changes; // the record, against OK at once
};

const Visit kVisits[] = {
    {"Enter at once", [](HWND) {}, TypeEnter, 1, false},
    {"keyboard and Enter", ChangeByKeyboard, TypeEnter, 1, true},
    {"keyboard and a mnemonic", ChangeByKeyboard, TypeMnemonicOfOk, 1, true},
    {"mouse", ChangeByMouse, ClickOk, 1, true},
    {"Escape", ChangeByKeyboard, TypeEscape, 0, false},
};

class EveryDialog : public DialogTest {
protected:
    // `atOnce` is the record of the first visit.
    static void ExpectOutcome(const Visit& visit, const CallerBuffer& buffer,
                              std::vector<i32>& atOnce) {
        const std::vector<i32> record = buffer.First(buffer.words.size());
        if (atOnce.empty()) {
            atOnce = record;
        }
        EXPECT_TRUE(visit.result == 0 || (record != atOnce) == visit.changes);
        RunPending();
        EXPECT_EQ(LiveWindowCount(), 0u);
        EXPECT_EQ(LiveTimerCount(), 0u);
    }
};

TEST_F(EveryDialog, IsWorkedByKeyboardAndByMouse) {
    for (const EffectRow& row : EffectCatalogue()) {
        SCOPED_TRACE(row.title);
        std::vector<i32> atOnce;
        for (const Visit& visit : kVisits) {
            SCOPED_TRACE(visit.name);
            const LeakGuard guard;
            CallerBuffer buffer;
            const i32 result =
                RunEffectDialog(row.id, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
                    visit.change(dialog);
                    visit.end(dialog);
                });
            EXPECT_EQ(result, visit.result);
            ExpectOutcome(visit, buffer, atOnce);
        }
    }
}

// Changing the effect opens the next dialog inside the event: what comes after is done from there.
void SoonAsEmbedded(std::string title, std::function<void()> action) {
    RunSoon([title = std::move(title), action = std::move(action)] {
        if (embeddedDialog != nullptr && TitleOf(embeddedDialog) == title) {
            action();
        } else {
            SoonAsEmbedded(title, action);
        }
    });
}

TEST_F(EveryDialog, IsWorkedInTheBrowserByKeyboardAndByMouse) {
    std::vector<i32> atOnce;
    for (const Visit& visit : kVisits) {
        SCOPED_TRACE(visit.name);
        const LeakGuard guard;
        CallerBuffer buffer;
        i32 effect = kUntouched;
        SoonAsEmbedded("Brightness and Contrast", [&] {
            SoonAsEmbedded("Hue and Saturation", [&] {
                visit.change(embeddedDialog);
                visit.end(browserWindow);
            });
            TypeKey(kKeyDown); // in the list
        });
        const i32 result =
            GetZQBrowserParam(nullptr, colour_.Handle(), &effect, buffer.words.data(), 16);
        EXPECT_EQ(result, visit.result);
        EXPECT_EQ(effect, 2);
        ExpectOutcome(visit, buffer, atOnce);
    }
}

} // namespace

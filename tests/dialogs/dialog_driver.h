// Drives a modal dialog as a person does: a timer waits for the dialog to open, then a script sends
// it messages.
#pragma once

#include "platform/types.h"
#include "platform/win32.h"
#include "tests/support/document_maker.h"
#include "tests/support/leak_guard.h"
#include <zq/document.h>

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

using DialogScript = std::function<void(HWND dialog)>;

// Calls `open`, which shows a dialog modally, and runs `script` on the dialog once it is shown. A
// dialog that the script leaves open is cancelled. Fails the test when no dialog appears.
void WithDialog(const std::function<void()>& open, const DialogScript& script);

// The same for GetZQParam; gives its result.
i32 RunEffectDialog(EffectId effect, DocHandle document, void* params, const DialogScript& script);

// What a person does in a dialog.
void Scroll(HWND dialog, int bar, int code, int thumb = 0);
void Click(HWND dialog, int control);
void PressOk(HWND dialog);
void PressCancel(HWND dialog);

// What a person sees.
std::string TitleOf(HWND window);
std::string TextOf(HWND dialog, int control);
bool IsChecked(HWND dialog, int control);
bool IsEnabled(HWND dialog, int control);

// What the After pane would run its effect with.
std::vector<i32> AnnouncedRecord(HWND dialog, std::size_t words);
// True once for each announcement.
bool TakeAnnouncement(HWND dialog);

constexpr i32 kUntouched = 0x5A5A5A5A;

// A caller's buffer with room to see what is written behind the largest record.
struct CallerBuffer {
    std::array<i32, 80> words;
    CallerBuffer() { words.fill(kUntouched); }
    std::vector<i32> First(std::size_t count) const {
        return {words.begin(), words.begin() + static_cast<std::ptrdiff_t>(count)};
    }
};

// A dialog as it opens, and what OK without a touch gives.
struct OpeningCase {
    EffectId effect;
    const char* title;
    std::vector<std::pair<int, const char*>> labels;
    std::vector<i32> record;    // in the caller's buffer after OK; nothing behind it is touched
    std::vector<i32> announced; // to the After pane
};
void ExpectOpening(const OpeningCase& opening, DocHandle document, CallerBuffer buffer = {});

// One move of a control, and what it makes of the record that the After pane gets.
struct MoveCase {
    int control;
    int code; // of a scroll bar; kClick for a button
    std::vector<i32> announced;
    std::vector<std::pair<int, const char*>> labels = {}; // to look at
};
constexpr int kClick = -1;
void ExpectMoves(HWND dialog, const std::vector<MoveCase>& moves);

// Tests of dialogs, with two small documents.
class DialogTest : public LeakGuardTest {
protected:
    static void SetUpTestSuite();

    TestDocument colour_{64, 48};
    TestDocument grey_{64, 48, ImageClass::Grey};
};

#include "tests/dialogs/dialog_driver.h"

#include "library/startup.h"
#include "preview/preview_control.h"
#include "resources/module.h"
#include <zq/zqui.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr char kDialogClass[] = "#32770";
constexpr UINT kLookEvery = 5; // milliseconds
constexpr int kMostLooks = 2000;

const DialogScript* pendingScript = nullptr;
int looks = 0;

void CALLBACK LookForDialog(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = FindWindowA(kDialogClass, nullptr);
    const bool shown = dialog != nullptr && IsWindowVisible(dialog) != 0;
    if (!shown && ++looks < kMostLooks) {
        return;
    }
    KillTimer(nullptr, timer);
    if (pendingScript == nullptr) {
        return;
    }
    const DialogScript script = *std::exchange(pendingScript, nullptr);
    if (!shown) {
        ADD_FAILURE() << "no dialog was shown";
        return;
    }
    script(dialog);
    if (IsWindowVisible(dialog) != 0) {
        PressCancel(dialog);
    }
}

} // namespace

void WithDialog(const std::function<void()>& open, const DialogScript& script) {
    pendingScript = &script;
    looks = 0;
    const UINT_PTR timer = SetTimer(nullptr, 0, kLookEvery, LookForDialog);
    open();
    KillTimer(nullptr, timer);
    EXPECT_EQ(std::exchange(pendingScript, nullptr), nullptr) << "the dialog never came up";
}

i32 RunEffectDialog(EffectId effect, DocHandle document, void* params, const DialogScript& script) {
    i32 result = 0;
    WithDialog([&] { result = GetZQParam(effect, nullptr, document, params); }, script);
    return result;
}

void Scroll(HWND dialog, int bar, int code, int thumb) {
    SendMessageA(dialog, WM_HSCROLL, MAKEWPARAM(code, thumb),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, bar)));
}

void Click(HWND dialog, int control) {
    if (IsEnabled(dialog, control)) {
        SendDlgItemMessageA(dialog, control, BM_CLICK, 0, 0);
    }
}

void PressOk(HWND dialog) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
}

void PressCancel(HWND dialog) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
}

std::string TitleOf(HWND window) {
    char text[256] = "";
    GetWindowTextA(window, text, sizeof(text));
    return text;
}

std::string TextOf(HWND dialog, int control) {
    return TitleOf(GetDlgItem(dialog, control));
}

bool IsChecked(HWND dialog, int control) {
    return IsDlgButtonChecked(dialog, control) == BST_CHECKED;
}

bool IsEnabled(HWND dialog, int control) {
    return IsWindowEnabled(GetDlgItem(dialog, control)) != 0;
}

std::vector<i32> AnnouncedRecord(HWND dialog, std::size_t words) {
    const PreviewControl* after = PreviewControlOf(GetDlgItem(dialog, kAfterPaneId));
    std::vector<i32> record(words, kUntouched);
    if (after == nullptr || after->params == nullptr) {
        ADD_FAILURE() << "no record was announced";
    } else {
        std::memcpy(record.data(), after->params, words * sizeof(i32));
    }
    return record;
}

bool TakeAnnouncement(HWND dialog) {
    PreviewControl* after = PreviewControlOf(GetDlgItem(dialog, kAfterPaneId));
    return after != nullptr && std::exchange(after->dirty, 0) != 0;
}

void ExpectOpening(const OpeningCase& opening, DocHandle document, CallerBuffer buffer) {
    SCOPED_TRACE(testing::Message() << "effect " << opening.effect);
    std::vector<i32> expected = buffer.First(buffer.words.size());
    std::ranges::copy(opening.record, expected.begin());
    const i32 result =
        RunEffectDialog(opening.effect, document, buffer.words.data(), [&](HWND dialog) {
            EXPECT_EQ(TitleOf(dialog), opening.title);
            for (const auto& [label, text] : opening.labels) {
                EXPECT_EQ(TextOf(dialog, label), text) << label;
            }
            EXPECT_EQ(AnnouncedRecord(dialog, opening.announced.size()), opening.announced);
            EXPECT_TRUE(TakeAnnouncement(dialog));
            PressOk(dialog);
        });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(buffer.First(buffer.words.size()), expected);
}

void ExpectMoves(HWND dialog, const std::vector<MoveCase>& moves) {
    TakeAnnouncement(dialog);
    for (const MoveCase& move : moves) {
        SCOPED_TRACE(testing::Message() << "control " << move.control << ", code " << move.code);
        if (move.code == kClick) {
            Click(dialog, move.control);
        } else {
            Scroll(dialog, move.control, move.code);
        }
        EXPECT_TRUE(TakeAnnouncement(dialog));
        EXPECT_EQ(AnnouncedRecord(dialog, move.announced.size()), move.announced);
        for (const auto& [label, text] : move.labels) {
            EXPECT_EQ(TextOf(dialog, label), text) << label;
        }
    }
}

void DialogTest::SetUpTestSuite() {
    LibraryEntry(ResourceModule());
}

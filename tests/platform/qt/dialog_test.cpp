#include "tests/platform/qt/drive.h"

#include "platform/qt/grab.h"

#include <gtest/gtest.h>

namespace {

INT_PTR EndByButtons(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
        EndDialog(dialog, LOWORD(wParam) + 40);
        return 1;
    }
    return message == WM_INITDIALOG;
}

} // namespace

TEST(ADialog, GivesTheResultOfTheButtonThatEndedIt) {
    RunSoon([] {
        const HWND dialog = FindWindowA("#32770", "every KIND");
        EXPECT_NE(dialog, nullptr);
        EXPECT_EQ(GetActiveWindow(), dialog);
        GrabWindow(dialog).save("/tmp/dialog.png");
        ClickMouse(GetDlgItem(dialog, IDOK), MiddleOf(GetDlgItem(dialog, IDOK)));
    });
    EXPECT_EQ(DialogBoxParamA(TestModule(), MAKEINTRESOURCEA(100), nullptr, EndByButtons, 0), 41);
    RunPending();
    EXPECT_EQ(LiveWindowCount(), 0u);
}

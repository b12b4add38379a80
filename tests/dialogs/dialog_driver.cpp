#include "tests/dialogs/dialog_driver.h"

#include <zq/zqui.h>

#include <gtest/gtest.h>

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
    SendDlgItemMessageA(dialog, control, BM_CLICK, 0, 0);
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

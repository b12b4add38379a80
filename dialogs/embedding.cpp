#include "dialogs/embedding.h"

#include "platform/embedded_dialog.h"
#include "resources/resource.h"

#include <algorithm>

HWND browserWindow = nullptr;
HWND embeddedDialog = nullptr;

namespace {

// Between the browser's frame and the dialog in it, in pixels.
constexpr LONG kLeftMargin = 3;
constexpr LONG kTopMargin = 10;
constexpr LONG kRightMargin = 3;
constexpr LONG kBottomMargin = 3;

// All styles but the caption, the frame and what makes a window of its own.
constexpr LONG_PTR kKeptStyles = 0x3F31FFFF;

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

RECT ScreenRectOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

RECT RectInBrowser(HWND window) {
    const RECT rect = ScreenRectOf(window);
    POINT place = {rect.left, rect.top};
    ScreenToClient(browserWindow, &place);
    const SIZE size = SizeOf(rect);
    return {place.x, place.y, place.x + size.cx, place.y + size.cy};
}

void TakeButtonAway(HWND dialog, int id) {
    SetDlgItemTextA(dialog, id, "");
    ShowWindow(GetDlgItem(dialog, id), SW_HIDE);
}

void Resize(HWND window, LONG width, LONG height) {
    SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MoveBy(int id, LONG dx, LONG dy) {
    const HWND control = GetDlgItem(browserWindow, id);
    const RECT place = RectInBrowser(control);
    SetWindowPos(control, nullptr, place.left + dx, place.top + dy, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Makes the browser large enough to show a dialog of this size whole. It never shrinks again, so
// that it does not jump from effect to effect.
void MakeRoom(const SIZE& dialog) {
    const HWND frame = GetDlgItem(browserWindow, IDC_EFFECT_FRAME);
    const HWND list = GetDlgItem(browserWindow, IDC_EFFECT_LIST);
    const SIZE room = SizeOf(ScreenRectOf(frame));
    const LONG dx = std::max<LONG>(0, kLeftMargin + dialog.cx + kRightMargin - room.cx);
    const LONG dy = std::max<LONG>(0, kTopMargin + dialog.cy + kBottomMargin - room.cy);
    if (dx == 0 && dy == 0) {
        return;
    }
    const SIZE browser = SizeOf(ScreenRectOf(browserWindow));
    Resize(browserWindow, browser.cx + dx, browser.cy + dy);
    Resize(frame, room.cx + dx, room.cy + dy);
    // The height of a drop-down list is that of the open one.
    Resize(list, SizeOf(ScreenRectOf(list)).cx + dx, room.cy);
    MoveBy(IDOK, dx, dy);
    MoveBy(IDCANCEL, dx, dy);
}

void BecomeChildOfBrowser(HWND dialog) {
    const LONG_PTR style = GetWindowLongPtrA(dialog, GWL_STYLE);
    SetWindowLongPtrA(dialog, GWL_STYLE, (style & kKeptStyles) | WS_CHILD);
    // Tab runs through the dialog and the browser alike.
    const LONG_PTR exStyle = GetWindowLongPtrA(dialog, GWL_EXSTYLE);
    SetWindowLongPtrA(dialog, GWL_EXSTYLE, exStyle | WS_EX_CONTROLPARENT);
    SetParent(dialog, browserWindow);
    WorkWhileEmbedding(browserWindow);
}

} // namespace

void EmbedInBrowser(HWND dialog) {
    if (browserWindow == nullptr) {
        return;
    }
    TakeButtonAway(dialog, IDOK);
    TakeButtonAway(dialog, IDCANCEL);
    SIZE size = SizeOf(ScreenRectOf(dialog));
    size.cy -= GetSystemMetrics(SM_CYCAPTION);
    BecomeChildOfBrowser(dialog);
    MakeRoom(size);
    const RECT frame = RectInBrowser(GetDlgItem(browserWindow, IDC_EFFECT_FRAME));
    SetWindowPos(dialog, GetDlgItem(browserWindow, IDC_EFFECT_LIST), frame.left + kLeftMargin,
                 frame.top + kTopMargin, size.cx, size.cy, SWP_FRAMECHANGED);
    ShowWindow(dialog, SW_SHOW);
    embeddedDialog = dialog;
}

bool PassToBrowser(HWND dialog, int command) {
    if (browserWindow == nullptr || dialog != embeddedDialog) {
        return false;
    }
    SendMessageA(browserWindow, WM_COMMAND, MAKEWPARAM(command, BN_CLICKED), 0);
    return true;
}

bool LeaveFocusToBrowser(HWND dialog) {
    if (browserWindow == nullptr || dialog != embeddedDialog) {
        return false;
    }
    SetFocus(GetDlgItem(browserWindow, IDC_EFFECT_LIST));
    return true;
}

void FinishEmbedded(HWND dialog) {
    if (browserWindow != nullptr && dialog != nullptr) {
        EndDialog(browserWindow, 1);
    }
}

#include "platform/qt/focus.h"

#include "platform/qt/keyboard.h"
#include "platform/qt/modal_loop.h"
#include "platform/qt/window.h"
#include "platform/qt/window_class.h"

#include <QApplication>

namespace {

bool SameTitle(const std::string& one, const char* other) {
    return other == nullptr || SameClassName(one, other);
}

} // namespace

void MoveFocus(QWidget* before, QWidget* now) {
    const HWND loser = WindowOfWidget(before);
    const HWND winner = WindowOfWidget(now);
    if (loser == winner) {
        return;
    }
    SendMessageA(loser, WM_KILLFOCUS, reinterpret_cast<WPARAM>(winner), 0);
    SendMessageA(winner, WM_SETFOCUS, reinterpret_cast<WPARAM>(loser), 0);
    UpdateDefaultButton(winner);
}

bool OwnWindowIsActive() {
    return WindowOfWidget(QApplication::activeWindow()) != nullptr;
}

extern "C" {

HWND GetActiveWindow() {
    const HWND active = TopLevelOf(WindowOfWidget(QApplication::activeWindow()));
    // A program keeps its active window when the desktop's attention goes elsewhere.
    return active != nullptr ? active : TopLevelOf(InnermostModalDialog());
}

HWND GetFocus() {
    const HWND focus = WindowOfWidget(QApplication::focusWidget());
    if (focus != nullptr) {
        return focus;
    }
    const QWidget* active = WidgetOf(GetActiveWindow());
    return active == nullptr ? nullptr : WindowOfWidget(active->focusWidget());
}

HWND SetFocus(HWND handle) {
    const HWND before = GetFocus();
    QWidget* widget = WidgetOf(handle);
    if (widget == nullptr) {
        if (QWidget* focus = WidgetOf(before); focus != nullptr && handle == nullptr) {
            focus->clearFocus();
            return before;
        }
        return nullptr;
    }
    widget->setFocus(Qt::OtherFocusReason);
    if (GetFocus() == handle) {
        UpdateDefaultButton(handle);
    }
    return before;
}

HWND FindWindowA(LPCSTR className, LPCSTR windowName) {
    const auto windows = AllWindows();
    for (auto handle = windows.rbegin(); handle != windows.rend(); ++handle) {
        const Window& window = *FindWindowOf(*handle);
        if (!window.IsChild() && !window.destroying &&
            (className == nullptr || SameClassName(window.className, className)) &&
            SameTitle(window.text, windowName)) {
            return *handle;
        }
    }
    return nullptr;
}

} // extern "C"

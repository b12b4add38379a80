#include "platform/embedded_dialog.h"

#include <utility>

namespace {

HWND servedFrame = nullptr;
HHOOK hook = nullptr;
// The question whether a message is for a dialog is first put to the hooks: this one's own comes
// back to it.
bool comesBack = false;

bool IsForFrame(const MSG& message) {
    return message.hwnd == servedFrame || IsChild(servedFrame, message.hwnd) != 0;
}

// Called with every message of a dialog's loop before the dialog looks at it.
LRESULT CALLBACK FilterMessage(int code, WPARAM wParam, LPARAM lParam) {
    MSG* message = reinterpret_cast<MSG*>(lParam);
    if (code == MSGF_DIALOGBOX && !std::exchange(comesBack, false) && IsForFrame(*message)) {
        comesBack = true;
        const BOOL taken = IsDialogMessageA(servedFrame, message);
        comesBack = false;
        if (taken != 0) {
            return TRUE;
        }
    }
    return CallNextHookEx(hook, code, wParam, lParam);
}

} // namespace

void WorkWhileEmbedding(HWND frame) {
    EnableWindow(frame, TRUE);
    servedFrame = frame;
    if (hook == nullptr) {
        hook = SetWindowsHookExA(WH_MSGFILTER, FilterMessage, nullptr, GetCurrentThreadId());
    }
}

void EndEmbedding() {
    if (hook != nullptr) {
        UnhookWindowsHookEx(hook);
        hook = nullptr;
    }
    servedFrame = nullptr;
}

#include "platform/escape_press.h"

#include "platform/win32.h"

#include <array>

void DropEscapePress() {
    // More keys than this do not wait; those that did would come after the newer ones.
    std::array<MSG, 64> others;
    std::size_t kept = 0;
    MSG message;
    while (kept < others.size() &&
           PeekMessageA(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE) != 0) {
        if (message.wParam != VK_ESCAPE) {
            others[kept++] = message;
        }
    }
    for (std::size_t i = 0; i < kept; ++i) {
        PostMessageA(others[i].hwnd, others[i].message, others[i].wParam, others[i].lParam);
    }
}

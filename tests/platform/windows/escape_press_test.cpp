#include "platform/escape_press.h"

#include "platform/win32.h"

#include <gtest/gtest.h>

TEST(EscapePress, LeavesTheQueueAndOtherKeysStay) {
    const HWND window =
        CreateWindowExA(0, "Static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    for (const char key : {'A', char{VK_ESCAPE}, 'B', char{VK_ESCAPE}}) {
        PostMessageA(window, WM_KEYDOWN, static_cast<WPARAM>(key), 0);
    }
    DropEscapePress();
    std::string keys;
    MSG message;
    while (PeekMessageA(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE) != 0) {
        keys += static_cast<char>(message.wParam);
    }
    EXPECT_EQ(keys, "AB");
    DestroyWindow(window);
}

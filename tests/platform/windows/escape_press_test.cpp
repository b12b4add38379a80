#include "platform/escape_press.h"

#include "engine/engine.h"
#include "platform/win32.h"
#include "tests/support/dib_maker.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// A window that has the keyboard.
class EscapePress : public testing::Test {
protected:
    void SetUp() override {
        window_ = CreateWindowExA(0, "Static", "", WS_POPUP | WS_VISIBLE, 0, 0, 8, 8, nullptr,
                                  nullptr, nullptr, nullptr);
        SetForegroundWindow(window_);
        SetFocus(window_);
    }

    void TearDown() override { DestroyWindow(window_); }

    static std::string WaitingKeys() {
        std::string keys;
        MSG message;
        while (PeekMessageA(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE) != 0) {
            keys += static_cast<char>(message.wParam);
        }
        return keys;
    }

    HWND window_ = nullptr;
};

TEST_F(EscapePress, LeavesTheQueueAndOtherKeysStay) {
    for (const char key : {'A', char{VK_ESCAPE}, 'B', char{VK_ESCAPE}}) {
        PostMessageA(window_, WM_KEYDOWN, static_cast<WPARAM>(key), 0);
    }
    DropEscapePress();
    EXPECT_EQ(WaitingKeys(), "AB");
}

TEST_F(EscapePress, StopsAKernelAndIsGone) {
    constexpr EffectId kNegative = 6;
    const OwnedBlock picture = MakeDib(ImageClass::Colour, 40, 30);
    ASSERT_TRUE(OwnedBlock(RunEffect(picture.Handle(), kNegative, nullptr)));

    keybd_event(VK_ESCAPE, 0, 0, 0);
    const bool pressed = (GetAsyncKeyState(VK_ESCAPE) & 0x8000) != 0;
    const OwnedBlock stopped(RunEffect(picture.Handle(), kNegative, nullptr));
    const std::string keys = WaitingKeys();
    keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
    GetAsyncKeyState(VK_ESCAPE); // forgets the press
    if (!pressed) {
        GTEST_SKIP() << "no keyboard: the program does not run on the user's desktop";
    }
    EXPECT_FALSE(stopped);
    EXPECT_EQ(keys, "");
    EXPECT_TRUE(OwnedBlock(RunEffect(picture.Handle(), kNegative, nullptr)));
}

} // namespace

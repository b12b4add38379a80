#include "tests/platform/qt/drive.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTest>

#include <vector>

namespace {

std::vector<UINT_PTR> ticks;
std::function<void(HWND, UINT_PTR)> onTick;

LRESULT Listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER) {
        ticks.push_back(wParam);
        if (onTick) {
            onTick(window, wParam);
        }
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void CALLBACK CountTick(HWND, UINT message, UINT_PTR id, DWORD) {
    EXPECT_EQ(message, WM_TIMER);
    ticks.push_back(id);
}

// Handles events until `count` ticks have come; the time limit only ends a test that fails.
bool WaitForTicks(std::size_t count) {
    return QTest::qWaitFor([count] { return ticks.size() >= count; }, 5000);
}

class ATimer : public testing::Test {
protected:
    ATimer() {
        WNDCLASSEXA description{};
        description.cbSize = sizeof description;
        description.lpfnWndProc = Listen;
        description.lpszClassName = "Ticking";
        RegisterClassExA(&description);
        window = CreateWindowExA(0, "Ticking", "", WS_POPUP, 0, 0, 20, 20, nullptr, nullptr,
                                 nullptr, nullptr);
        ticks.clear();
    }

    ~ATimer() override {
        onTick = nullptr;
        DestroyWindow(window);
        RunPending();
        EXPECT_EQ(LiveTimerCount(), 0u);
        UnregisterClassA("Ticking", nullptr);
    }

    HWND window;
};

} // namespace

TEST_F(ATimer, TicksUntilItIsKilled) {
    EXPECT_EQ(SetTimer(window, 100, 10, nullptr), 100u);
    EXPECT_TRUE(WaitForTicks(3));
    EXPECT_EQ(ticks[2], 100u);
    EXPECT_TRUE(KillTimer(window, 100));
    EXPECT_FALSE(KillTimer(window, 100));
    EXPECT_EQ(LiveTimerCount(), 0u);
}

TEST_F(ATimer, IsReplacedByOneWithTheSameId) {
    EXPECT_EQ(SetTimer(window, 0, 10, nullptr), 1u); // 0 is an id, but would read as a failure
    EXPECT_EQ(SetTimer(window, 0, 1000000, nullptr), 1u);
    EXPECT_EQ(LiveTimerCount(), 1u);
    SetTimer(window, 1, 10, nullptr);
    EXPECT_TRUE(WaitForTicks(3));
    EXPECT_EQ(std::count(ticks.begin(), ticks.end(), 0u), 0);
}

TEST_F(ATimer, WithoutAWindowCallsItsProcedure) {
    const UINT_PTR one = SetTimer(nullptr, 0, 10, CountTick);
    const UINT_PTR other = SetTimer(nullptr, 0, 1000000, CountTick);
    EXPECT_NE(one, 0u);
    EXPECT_NE(one, other);
    EXPECT_TRUE(WaitForTicks(1));
    EXPECT_EQ(ticks[0], one);
    EXPECT_TRUE(KillTimer(nullptr, one));
    EXPECT_TRUE(KillTimer(nullptr, other));
}

TEST_F(ATimer, TicksWhileItsOwnHandlerRunsALoop) {
    onTick = [](HWND, UINT_PTR) {
        if (ticks.size() == 1) {
            EXPECT_TRUE(WaitForTicks(3)); // inside the first tick's handler
        }
    };
    SetTimer(window, 7, 10, nullptr);
    EXPECT_TRUE(WaitForTicks(3));
}

TEST_F(ATimer, MayEndWithItsWindowWhileItTicks) {
    onTick = [](HWND ticking, UINT_PTR) { DestroyWindow(ticking); };
    SetTimer(window, 7, 10, nullptr);
    SetTimer(window, 8, 10, nullptr);
    EXPECT_TRUE(WaitForTicks(1));
    EXPECT_EQ(LiveTimerCount(), 0u);
    RunPending();
    EXPECT_EQ(ticks.size(), 1u);
}

#include "editors/super_window.h"

#include "platform/qt/window_testing.h"
#include "tests/drive/drive.h"
#include "tests/support/leak_guard.h"

#include <algorithm>
#include <climits>

namespace {

constexpr u32 kGround = 0xC0C0C0;
constexpr u32 kLight = 0xFFFFFF;
constexpr u32 kShade = 0x808080;
constexpr u32 kAnyInk = 0;

// The corners are within.
struct Area {
    int left = INT_MAX, top = INT_MAX, right = -1, bottom = -1;

    int Width() const { return right - left + 1; }
    int Height() const { return bottom - top + 1; }
    void Add(int x, int y) {
        *this = {std::min(left, x), std::min(top, y), std::max(right, x), std::max(bottom, y)};
    }
};

void Fill(Screen& screen, const Area& area, u32 colour) {
    for (int y = area.top; y <= area.bottom; ++y) {
        std::fill_n(&screen.At(area.left, y), area.Width(), colour);
    }
}

class SuperWindow : public LeakGuardTest {
protected:
    void SetUp() override { ASSERT_TRUE(RegisterSuperWindow(nullptr)); }
    void TearDown() override {
        UnregisterSuperWindow(nullptr);
        EXPECT_EQ(RegisteredClassCount(), classes_);
        EXPECT_EQ(LiveWindowCount(), windows_);
        LeakGuardTest::TearDown();
    }

    static Screen PictureOf(DWORD style, const char* text, int width = 200, int height = 100) {
        const HWND window = CreateWindowExA(0, "SuperWnd", text, WS_POPUP | WS_VISIBLE | style, 0,
                                            0, width, height, nullptr, nullptr, nullptr, nullptr);
        Screen picture = ScreenOf(window);
        DestroyWindow(window);
        return picture;
    }

    // What encloses all pixels of a colour, or all that differ from the ground.
    static Area InkOf(const Screen& picture, u32 colour = kAnyInk) {
        Area ink;
        for (int y = 0; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                const u32 pixel = picture.At(x, y);
                if (colour == kAnyInk ? pixel != kGround : pixel == colour) {
                    ink.Add(x, y);
                }
            }
        }
        return ink;
    }

private:
    std::size_t classes_ = RegisteredClassCount();
    std::size_t windows_ = LiveWindowCount();
};

TEST_F(SuperWindow, DrawsARaisedFrameAtItsBorderOrWithinItsMargin) {
    struct {
        DWORD style;
        int height;
        Area frame;
    } const cases[] = {
        {kSuperFrameRaised, 100, {0, 0, 199, 99}},
        {kSuperFrameRaised | kSuperMargin, 100, {16, 8, 183, 91}},
        {kSuperFrameRaised | kSuperMargin, 30, {8, 4, 191, 25}},
    };
    for (const auto& test : cases) {
        Screen expected(200, test.height, kGround);
        const auto& [left, top, right, bottom] = test.frame;
        Fill(expected, {left, top, right, bottom}, kShade);
        Fill(expected, {left, top, right - 1, bottom - 1}, kLight);
        Fill(expected, {left + 1, top + 1, right - 1, bottom - 1}, kGround);
        const Screen picture = PictureOf(test.style, "", 200, test.height);
        EXPECT_TRUE(picture == expected) << test.style << ", height " << test.height;
    }
}

TEST_F(SuperWindow, PlacesItsTextAndChoosesItsHeight) {
    const auto ink = [](DWORD style) { return InkOf(PictureOf(style, "HH")); };
    const Area left = ink(kSuperText14 | kSuperTextLeftTop);
    const Area right = ink(kSuperText14 | kSuperTextRightTop);
    const Area top = ink(kSuperText14 | kSuperTextCentreTop);
    const Area bottom = ink(kSuperText14 | kSuperTextCentreBottom);
    EXPECT_LT(left.right, 60);
    EXPECT_GT(right.left, 140);
    EXPECT_NEAR(top.left + top.right, 200, 8);
    EXPECT_EQ(top.left, bottom.left);
    EXPECT_LT(top.bottom, 20);
    EXPECT_GT(bottom.top, 80);
    EXPECT_EQ(top.top, left.top);
    EXPECT_EQ(top.Width(), bottom.Width());
    EXPECT_EQ(top.Height(), bottom.Height());

    const Area inMargin = ink(kSuperText14 | kSuperMargin);
    EXPECT_EQ(inMargin.left, left.left + 16);
    EXPECT_EQ(inMargin.top, left.top + 8);
    EXPECT_GT(ink(kSuperText20).Height(), left.Height());
    EXPECT_GT(ink(0).Height(), 0);
    EXPECT_GT(InkOf(PictureOf(kSuperText14, std::string(400, 'i').c_str(), 900)).Height(), 0);
}

TEST_F(SuperWindow, DrawsTallTextInRelief) {
    const Screen picture = PictureOf(kSuperText40, "H");
    const Area light = InkOf(picture, kLight);
    const Area shade = InkOf(picture, kShade);
    EXPECT_LT(light.left, shade.left);
    EXPECT_LT(light.top, shade.top);
    EXPECT_EQ(picture.At(light.left + 3, (light.top + light.bottom) / 2), kGround)
        << "the letter itself";
}

std::vector<std::pair<WPARAM, bool>> drawn; // id, and whether there was a context to draw on

LRESULT CALLBACK NoteDrawing(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kSuperDrawMessage) {
        const RECT rect{1, 1, 9, 9};
        const auto black = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
        drawn.emplace_back(wParam, FillRect(reinterpret_cast<HDC>(lParam), &rect, black) != 0);
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(SuperWindow, LetsItsParentDrawAtOnceWhenItsTextChanges) {
    WNDCLASSEXA description{};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = NoteDrawing;
    description.lpszClassName = "parent";
    ASSERT_NE(RegisterClassExA(&description), 0);
    const HWND parent = CreateWindowExA(0, "parent", "", WS_POPUP | WS_VISIBLE, 0, 0, 100, 100,
                                        nullptr, nullptr, nullptr, nullptr);
    const auto child = [&](std::uintptr_t id, DWORD style) {
        return CreateWindowExA(0, kSuperWindowClass, "", WS_CHILD | WS_VISIBLE | style, 0, 0, 50,
                               50, parent, reinterpret_cast<HMENU>(id), nullptr, nullptr);
    };
    const HWND drawnByParent = child(7, kSuperParentDraws);
    const HWND plain = child(8, 0);
    ScreenOf(parent);
    drawn.clear();
    SetWindowTextA(plain, "a");
    EXPECT_TRUE(drawn.empty());
    SetWindowTextA(drawnByParent, "b");
    EXPECT_EQ(drawn, (std::vector<std::pair<WPARAM, bool>>{{7, true}}));
    EXPECT_EQ(ScreenOf(drawnByParent).At(5, 5), 0u);
    DestroyWindow(parent);
    UnregisterClassA("parent", nullptr);
}

} // namespace

#include "editors/super_window.h"

#include "platform/qt/grab.h"
#include "platform/qt/window_testing.h"
#include "tests/support/leak_guard.h"

#include <QPainter>

namespace {

constexpr QRgb kGround = 0xFFC0C0C0;
constexpr QRgb kLight = 0xFFFFFFFF;
constexpr QRgb kShade = 0xFF808080;

class SuperWindow : public LeakGuardTest {
protected:
    void SetUp() override { ASSERT_TRUE(RegisterSuperWindow(nullptr)); }
    void TearDown() override {
        UnregisterSuperWindow(nullptr);
        EXPECT_EQ(RegisteredClassCount(), classes_);
        EXPECT_EQ(LiveWindowCount(), windows_);
        LeakGuardTest::TearDown();
    }

    static QImage PictureOf(DWORD style, const char* text, int width = 200, int height = 100) {
        const HWND window = CreateWindowExA(0, "SuperWnd", text, WS_POPUP | WS_VISIBLE | style, 0,
                                            0, width, height, nullptr, nullptr, nullptr, nullptr);
        const QImage picture = GrabWindow(window).convertToFormat(QImage::Format_RGB32);
        DestroyWindow(window);
        return picture;
    }

    // What encloses all pixels of a colour, or all that differ from the ground.
    static QRect InkOf(const QImage& picture, QRgb colour = 0) {
        QRect ink;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb pixel = picture.pixel(x, y);
                if (colour == 0 ? pixel != kGround : pixel == colour) {
                    ink |= QRect(x, y, 1, 1);
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
        QRect frame;
    } const cases[] = {
        {kSuperFrameRaised, 100, QRect(0, 0, 200, 100)},
        {kSuperFrameRaised | kSuperMargin, 100, QRect(16, 8, 168, 84)},
        {kSuperFrameRaised | kSuperMargin, 30, QRect(8, 4, 184, 22)},
    };
    for (const auto& test : cases) {
        const QImage picture = PictureOf(test.style, "", 200, test.height);
        QImage expected(200, test.height, QImage::Format_RGB32);
        expected.fill(kGround);
        const QRect& frame = test.frame;
        QPainter painter(&expected);
        painter.fillRect(frame, QColor(kShade));
        painter.fillRect(frame.adjusted(0, 0, -1, -1), QColor(kLight));
        painter.fillRect(frame.adjusted(1, 1, -1, -1), QColor(kGround));
        painter.end();
        EXPECT_TRUE(picture == expected) << test.style << ", height " << test.height;
    }
}

TEST_F(SuperWindow, PlacesItsTextAndChoosesItsHeight) {
    const auto ink = [](DWORD style) { return InkOf(PictureOf(style, "HH")); };
    const QRect left = ink(kSuperText14 | kSuperTextLeftTop);
    const QRect right = ink(kSuperText14 | kSuperTextRightTop);
    const QRect top = ink(kSuperText14 | kSuperTextCentreTop);
    const QRect bottom = ink(kSuperText14 | kSuperTextCentreBottom);
    EXPECT_LT(left.right(), 60);
    EXPECT_GT(right.left(), 140);
    EXPECT_NEAR(top.center().x(), 100, 4);
    EXPECT_EQ(top.left(), bottom.left());
    EXPECT_LT(top.bottom(), 20);
    EXPECT_GT(bottom.top(), 80);
    EXPECT_EQ(top.top(), left.top());
    EXPECT_EQ(top.size(), bottom.size());

    EXPECT_EQ(ink(kSuperText14 | kSuperMargin).topLeft(), left.topLeft() + QPoint(16, 8));
    EXPECT_GT(ink(kSuperText20).height(), left.height());
    EXPECT_GT(ink(0).height(), 0);
    EXPECT_FALSE(InkOf(PictureOf(kSuperText14, std::string(400, 'i').c_str(), 900)).isEmpty());
}

TEST_F(SuperWindow, DrawsTallTextInRelief) {
    const QImage picture = PictureOf(kSuperText40, "H");
    const QRect light = InkOf(picture, kLight);
    const QRect shade = InkOf(picture, kShade);
    EXPECT_LT(light.left(), shade.left());
    EXPECT_LT(light.top(), shade.top());
    EXPECT_EQ(picture.pixel(light.left() + 3, light.center().y()), kGround) << "the letter itself";
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
    GrabWindow(parent);
    drawn.clear();
    SetWindowTextA(plain, "a");
    EXPECT_TRUE(drawn.empty());
    SetWindowTextA(drawnByParent, "b");
    EXPECT_EQ(drawn, (std::vector<std::pair<WPARAM, bool>>{{7, true}}));
    EXPECT_EQ(GrabWindow(drawnByParent).pixel(5, 5), 0xFF000000);
    DestroyWindow(parent);
    UnregisterClassA("parent", nullptr);
}

} // namespace

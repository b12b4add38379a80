#include "tests/platform/qt/drive.h"

#include "platform/qt/grab.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using Messages = std::vector<std::string>;

Messages heard;
std::map<HWND, std::string> names;
std::function<void(HWND, UINT)> reaction;
LRESULT answerToCreate = 0;

std::string Point(LPARAM value) {
    return std::to_string(static_cast<SHORT>(LOWORD(value))) + "," +
           std::to_string(static_cast<SHORT>(HIWORD(value)));
}

const struct {
    UINT message;
    const char* text;
    bool hasPoint;
} kHeard[] = {
    {WM_NCCREATE, "nccreate", false},
    {WM_CREATE, "create", false},
    {WM_SIZE, "size", true},
    {WM_DESTROY, "destroy", false},
    {WM_NCDESTROY, "ncdestroy", false},
    {WM_PAINT, "paint", false},
    {WM_ERASEBKGND, "erase", false},
    {WM_MOUSEMOVE, "move", true},
    {WM_LBUTTONDOWN, "down", true},
    {WM_LBUTTONUP, "up", true},
    {WM_LBUTTONDBLCLK, "double", true},
};

void Note(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    for (const auto& [heardMessage, text, hasPoint] : kHeard) {
        if (heardMessage == message) {
            const bool drags = message == WM_MOUSEMOVE && wParam == MK_LBUTTON;
            heard.push_back(names[window] + " " + (drags ? "drag" : text) +
                            (hasPoint ? " " + Point(lParam) : ""));
        }
    }
}

LRESULT Listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        names[window] = reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpszName;
    }
    Note(window, message, wParam, lParam);
    if (reaction) {
        reaction(window, message);
    }
    return message == WM_CREATE ? answerToCreate : DefWindowProcA(window, message, wParam, lParam);
}

WNDCLASSEXA ListenerClass(const char* name, UINT style = CS_DBLCLKS) {
    WNDCLASSEXA description{};
    description.cbSize = sizeof description;
    description.style = style;
    description.lpfnWndProc = Listen;
    description.cbWndExtra = sizeof(LONG_PTR);
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    description.lpszClassName = name;
    return description;
}

class AWindow : public testing::Test {
protected:
    AWindow() {
        const WNDCLASSEXA description = ListenerClass("Listener");
        RegisterClassExA(&description);
        heard.clear();
    }

    ~AWindow() override {
        reaction = nullptr;
        answerToCreate = 0;
        for (const auto& [window, name] : names) {
            DestroyWindow(window);
        }
        names.clear();
        RunPending();
        EXPECT_EQ(LiveWindowCount(), 0u);
        EXPECT_TRUE(UnregisterClassA("LISTENER", nullptr));
    }

    static HWND Make(const char* name, HWND parent = nullptr, DWORD style = 0) {
        const DWORD kind = parent == nullptr ? WS_POPUP : WS_CHILD;
        return CreateWindowExA(0, "listener", name, kind | WS_VISIBLE | style, 10, 20, 100, 60,
                               parent, nullptr, nullptr, nullptr);
    }
};

bool IsColor(HWND window, QPoint place, QRgb color) {
    return (GrabWindow(window).pixel(place) & 0xFFFFFF) == color;
}

constexpr QRgb kWhite = 0xFFFFFF;
constexpr QRgb kGrey = 0x808080;

// Paints its whole client area grey.
void PaintGrey(HWND window, UINT message) {
    if (message == WM_PAINT) {
        PAINTSTRUCT paint;
        RECT all{0, 0, 1000, 1000};
        FillRect(BeginPaint(window, &paint), &all, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
        EndPaint(window, &paint);
    }
}

} // namespace

TEST(WindowClasses, CompareWithoutCaseAndAreRegisteredOnce) {
    const std::size_t before = RegisteredClassCount();
    const WNDCLASSEXA one = ListenerClass("OneOfAKind");
    const WNDCLASSEXA same = ListenerClass("ONEOFAKIND");
    EXPECT_NE(RegisterClassExA(&one), 0);
    EXPECT_EQ(RegisterClassExA(&same), 0);
    for (const char* taken : {"button", "SCROLLBAR", "#32770"}) {
        const WNDCLASSEXA system = ListenerClass(taken);
        EXPECT_EQ(RegisterClassExA(&system), 0) << taken;
    }
    EXPECT_EQ(RegisteredClassCount(), before + 1);
    EXPECT_TRUE(UnregisterClassA("oneofakind", nullptr));
    EXPECT_FALSE(UnregisterClassA("oneofakind", nullptr));
}

TEST_F(AWindow, HearsOfItsLifeInOrder) {
    const HWND outer = Make("outer", nullptr, WS_BORDER);
    Make("first", outer);
    Make("second", outer);
    SetWindowPos(outer, nullptr, 0, 0, 90, 60, SWP_NOMOVE | SWP_NOZORDER);
    SetWindowPos(outer, nullptr, 5, 5, 90, 60, SWP_NOZORDER);
    EXPECT_FALSE(UnregisterClassA("Listener", nullptr));
    DestroyWindow(outer);
    const Messages expected = {
        "outer nccreate",     "outer create",      "outer size 98,58", "first nccreate",
        "first create",       "first size 100,60", "second nccreate",  "second create",
        "second size 100,60", "outer size 88,58",  "outer destroy",    "first destroy",
        "second destroy",     "first ncdestroy",   "second ncdestroy", "outer ncdestroy",
    };
    EXPECT_EQ(heard, expected);
}

TEST_F(AWindow, MayRefuseToBeCreated) {
    answerToCreate = -1;
    EXPECT_EQ(Make("refused"), nullptr);
    const Messages expected = {"refused nccreate", "refused create", "refused destroy",
                               "refused ncdestroy"};
    EXPECT_EQ(heard, expected);
    EXPECT_EQ(
        CreateWindowExA(0, "Unknown", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr),
        nullptr);
    EXPECT_EQ(CreateWindowExA(0, "Listener", "", WS_CHILD, 0, 0, 9, 9, nullptr, nullptr, nullptr,
                              nullptr),
              nullptr);
}

TEST_F(AWindow, LeavesAHandleThatNamesNothing) {
    const HWND stale = Make("gone");
    DestroyWindow(stale);
    const HWND reused = Make("new");
    EXPECT_NE(reused, stale);
    const auto mark = std::uintptr_t{1} << 63;
    for (HWND wrong : {stale, HWND{}, reinterpret_cast<HWND>(std::uintptr_t{0x1400007}),
                       reinterpret_cast<HWND>(mark), reinterpret_cast<HWND>(~std::uintptr_t{0})}) {
        RECT rect{};
        POINT point{};
        PAINTSTRUCT paint;
        int low = 0;
        int high = 0;
        char text[8];
        const LRESULT answers[] = {
            IsWindow(wrong),
            DestroyWindow(wrong),
            SendMessageA(wrong, WM_CREATE, 0, 0),
            PostMessageA(wrong, WM_CREATE, 0, 0),
            DefWindowProcA(wrong, WM_NCCREATE, 0, 0),
            GetWindowLongPtrA(wrong, GWL_STYLE),
            SetWindowLongPtrA(wrong, GWLP_USERDATA, 1),
            GetClassNameA(wrong, text, 8),
            ShowWindow(wrong, SW_SHOW),
            SetWindowPos(wrong, nullptr, 0, 0, 1, 1, 0),
            GetClientRect(wrong, &rect),
            GetWindowRect(wrong, &rect),
            ScreenToClient(wrong, &point),
            ClientToScreen(wrong, &point),
            IsWindowVisible(wrong),
            IsWindowEnabled(wrong),
            EnableWindow(wrong, 1),
            GetParent(wrong) != nullptr,
            SetParent(wrong, reused) != nullptr,
            SetWindowTextA(wrong, "x"),
            GetWindowTextA(wrong, text, 8),
            KillTimer(wrong, 1),
            InvalidateRect(wrong, nullptr, 1),
            UpdateWindow(wrong),
            BeginPaint(wrong, &paint) != nullptr,
            EndPaint(wrong, &paint),
            EndDialog(wrong, 1),
            GetDlgItem(wrong, 1) != nullptr,
            GetDlgCtrlID(wrong),
            SetDlgItemInt(wrong, 1, 1, 0),
            CheckRadioButton(wrong, 1, 2, 1),
            SetScrollRange(wrong, SB_CTL, 0, 9, 1),
            GetScrollRange(wrong, SB_CTL, &low, &high),
            SetScrollPos(wrong, SB_CTL, 1, 1),
            GetScrollPos(wrong, SB_CTL),
        };
        for (std::size_t call = 0; call < std::size(answers); ++call) {
            EXPECT_EQ(answers[call], 0) << "call " << call;
        }
    }
    EXPECT_EQ(SetTimer(stale, 1, 10, nullptr), 0u);
    EXPECT_TRUE(IsWindow(reused));
}

TEST_F(AWindow, MayBeDestroyedByItsOwnMessages) {
    const HWND outer = Make("outer");
    const HWND inner = Make("inner", outer);
    reaction = [outer](HWND window, UINT message) {
        if (message == WM_LBUTTONDOWN || (message == WM_DESTROY && window != outer)) {
            DestroyWindow(outer);
        }
    };
    heard.clear();
    ClickMouse(inner, {5, 5});
    const Messages expected = {"inner down 5,5", "outer destroy", "inner destroy",
                               "inner ncdestroy", "outer ncdestroy"};
    EXPECT_EQ(heard, expected);
    EXPECT_FALSE(IsWindow(inner));
}

TEST_F(AWindow, KeepsWordsTextAndClassName) {
    const HWND window = Make("title");
    EXPECT_EQ(SetWindowLongPtrA(window, GWLP_USERDATA, 7), 0);
    EXPECT_EQ(SetWindowLongPtrA(window, 0, 8), 0);
    EXPECT_EQ(SetWindowLongPtrA(window, GWLP_USERDATA, 9), 7);
    EXPECT_EQ(GetWindowLongPtrA(window, 0), 8);
    EXPECT_EQ(SetWindowLongPtrA(window, 1, 5), 0); // beyond the extra bytes
    EXPECT_EQ(GetWindowLongPtrA(window, 1), 0);
    char text[4];
    EXPECT_EQ(GetWindowTextA(window, text, 4), 3);
    EXPECT_STREQ(text, "tit");
    EXPECT_EQ(GetClassNameA(window, text, 4), 3);
    EXPECT_STREQ(text, "Lis");
    EXPECT_EQ(FindWindowA("LISTENER", "Title"), window);
    EXPECT_EQ(FindWindowA(nullptr, "other"), nullptr);
}

TEST_F(AWindow, HasItsClientAreaInsideTheBorder) {
    const HWND outer = Make("outer", nullptr, WS_BORDER);
    const HWND inner = Make("inner", outer, WS_BORDER);
    RECT client;
    RECT rect;
    ASSERT_TRUE(GetClientRect(inner, &client));
    ASSERT_TRUE(GetWindowRect(inner, &rect));
    EXPECT_EQ(SetParent(outer, inner), nullptr); // no window is inside its own child
    EXPECT_EQ(client.right, 98);
    EXPECT_EQ(client.bottom, 58);
    EXPECT_EQ(rect.right - rect.left, 100);
    POINT corner{rect.left, rect.top};
    ScreenToClient(outer, &corner);
    EXPECT_EQ(corner.x, 10);
    EXPECT_EQ(corner.y, 20);
    POINT origin{0, 0};
    ClientToScreen(inner, &origin);
    EXPECT_EQ(origin.x, rect.left + 1);
    EXPECT_TRUE(IsWindowVisible(inner));
    EXPECT_TRUE(ShowWindow(outer, SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(inner));
    heard.clear();
    PressMouse(inner, {1, 1});
    EXPECT_EQ(heard, Messages{"inner down 0,0"});
}

TEST_F(AWindow, ThatHoldsTheMouseHearsOfMovesOutside) {
    const HWND outer = Make("outer");
    const HWND one = Make("one", outer);
    SetWindowPos(one, nullptr, 50, 0, 40, 60, SWP_NOZORDER);
    reaction = [one](HWND window, UINT message) {
        if (message == WM_LBUTTONDOWN && window == one) {
            EXPECT_EQ(SetCapture(one), nullptr);
        } else if (message == WM_LBUTTONUP) {
            EXPECT_EQ(GetCapture(), one);
            ReleaseCapture();
        }
    };
    heard.clear();
    PressMouse(one, {3, 4});
    DragMouse(one, {-7, -8});
    DragMouse(outer, {20, 5});
    ReleaseMouse(outer, {60, 5});
    SendMouseTo(outer, QEvent::MouseMove, {1, 2}, Qt::NoButton);
    SendMouseTo(one, QEvent::MouseButtonDblClick, {1, 1});
    PressMouse(one, {1, 1}, Qt::RightButton);
    const Messages expected = {"one down 3,4", "one drag -7,-8", "one drag -30,5",
                               "one up 10,5",  "outer move 1,2", "one double 1,1"};
    EXPECT_EQ(heard, expected);
    SetCapture(one);
    DestroyWindow(one);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(AWindow, PaintsOnlyWhatIsInvalidAndErasesWhenAsked) {
    const HWND window = Make("window");
    UpdateWindow(window);
    reaction = PaintGrey;
    RECT part{10, 10, 20, 20};
    InvalidateRect(window, &part, 0);
    heard.clear();
    UpdateWindow(window);
    UpdateWindow(window);
    EXPECT_EQ(heard, Messages{"window paint"});
    EXPECT_TRUE(IsColor(window, {10, 10}, kGrey));
    EXPECT_TRUE(IsColor(window, {20, 20}, kWhite));
    EXPECT_TRUE(IsColor(window, {9, 9}, kWhite));

    reaction = [](HWND painted, UINT message) {
        if (message == WM_PAINT) {
            PAINTSTRUCT paint;
            EXPECT_NE(BeginPaint(painted, &paint), nullptr);
            EXPECT_EQ(BeginPaint(painted, &paint), nullptr); // one painting at a time
            EXPECT_EQ(paint.rcPaint.right, 14);
            EndPaint(painted, &paint);
        }
    };
    part = {8, 8, 14, 14};
    heard.clear();
    InvalidateRect(window, &part, 1);
    RunPending();
    const Messages expected = {"window paint", "window erase"};
    EXPECT_EQ(heard, expected);
    EXPECT_TRUE(IsColor(window, {13, 13}, kWhite));
    EXPECT_TRUE(IsColor(window, {14, 14}, kGrey));
}

TEST_F(AWindow, ThatDoesNotPaintIsNotAskedForEver) {
    const HWND window = Make("window");
    RunPending();
    heard.clear();
    InvalidateRect(window, nullptr, 0);
    for (int turn = 0; turn < 5; ++turn) {
        RunPending();
    }
    EXPECT_EQ(heard, Messages{"window paint"});
}

TEST_F(AWindow, HearsPostedMessagesLaterAndNoneAfterItsEnd) {
    const HWND window = Make("window");
    const HWND other = Make("other");
    heard.clear();
    EXPECT_TRUE(PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(-1, 2)));
    EXPECT_TRUE(PostMessageA(other, WM_LBUTTONUP, 0, 0));
    EXPECT_EQ(heard, Messages{});
    DestroyWindow(other);
    heard.clear();
    RunPending();
    std::erase(heard, "window paint");
    EXPECT_EQ(heard, Messages{"window up -1,2"});
}

TEST_F(AWindow, ShowsThroughAnEtchedFrameAndItsOtherChildrenOverIt) {
    const HWND outer = Make("outer");
    reaction = PaintGrey;
    const HWND child = Make("child", outer);
    const HWND frame = CreateWindowExA(0, "static", "", WS_CHILD | WS_VISIBLE | SS_ETCHEDFRAME, 4,
                                       4, 30, 40, outer, nullptr, nullptr, nullptr);
    EXPECT_TRUE(MoveWindow(child, 20, 10, 40, 20, 1));
    UpdateWindow(child);
    reaction = nullptr;
    EXPECT_EQ(WidgetForTest(child)->geometry(), QRect(20, 10, 40, 20));
    EXPECT_TRUE(IsColor(outer, {4, 4}, 0x606060));
    EXPECT_TRUE(IsColor(outer, {5, 5}, kWhite));
    EXPECT_TRUE(IsColor(outer, {6, 40}, kWhite)); // the outer window's own ground
    EXPECT_TRUE(IsColor(outer, {33, 15}, kGrey)); // the child, not the frame's light edge
    EXPECT_TRUE(IsWindow(frame));
}

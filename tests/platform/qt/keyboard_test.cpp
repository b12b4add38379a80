#include "tests/platform/qt/drive.h"

#include "platform/qt/input_testing.h"

#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr int kBar = 201;
constexpr int kRed = 210;
constexpr int kGreen = 211;
constexpr int kBlue = 212;
constexpr int kSquare = 220;
constexpr int kDrawn = 221;
constexpr int kAuto = 222;

std::vector<int> commands;
std::function<void(HWND)> drive;

INT_PTR Listen(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        PostMessageA(dialog, WM_USER, 0, 0);
        return 1;
    case WM_USER:
        commands.clear();
        drive(dialog);
        EndDialog(dialog, 1);
        return 1;
    case WM_COMMAND:
        commands.push_back(LOWORD(wParam));
        return 1;
    default:
        return 0;
    }
}

void InDialog(std::function<void(HWND)> action) {
    drive = std::move(action);
    EXPECT_EQ(DialogBoxParamA(TestModule(), MAKEINTRESOURCEA(100), nullptr, Listen, 0), 1);
    RunPending();
}

int FocusId() {
    return GetDlgCtrlID(GetFocus());
}

// The ids that have the focus after each press of a key.
std::vector<int> Walk(Qt::Key key, int steps, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    std::vector<int> ids;
    for (int step = 0; step < steps; ++step) {
        TypeKey(key, modifiers);
        ids.push_back(FocusId());
    }
    return ids;
}

using Ids = std::vector<int>;

constexpr SHORT kPressed = 1;

} // namespace

TEST(Tab, GoesThroughTheTabStopsInTheTemplatesOrder) {
    InDialog([](HWND dialog) {
        EXPECT_EQ(FocusId(), kBar);
        EXPECT_EQ(Walk(Qt::Key_Tab, 6), (Ids{kRed, kSquare, kAuto, IDOK, IDCANCEL, kBar}));
        EXPECT_EQ(Walk(Qt::Key_Backtab, 2, Qt::ShiftModifier), (Ids{IDCANCEL, IDOK}));
        CheckRadioButton(dialog, kRed, kBlue, kBlue);
        EnableWindow(GetDlgItem(dialog, kAuto), 0);
        ShowWindow(GetDlgItem(dialog, IDCANCEL), SW_HIDE);
        EXPECT_EQ(Walk(Qt::Key_Tab, 4), (Ids{kBar, kBlue, kSquare, IDOK}));
        EXPECT_EQ(commands, Ids{});
    });
}

TEST(Tab, FollowsTheOrderOfSiblingsAndGoesThroughControlParents) {
    InDialog([](HWND dialog) {
        const auto move = [&](int id, HWND after, UINT flags) {
            SetWindowPos(GetDlgItem(dialog, id), after, 0, 0, 0, 0,
                         SWP_NOMOVE | SWP_NOSIZE | flags);
        };
        move(kAuto, GetDlgItem(dialog, kBar), 0);
        move(IDCANCEL, nullptr, 0);
        move(IDOK, nullptr, SWP_NOZORDER);
        EXPECT_EQ(Walk(Qt::Key_Tab, 6), (Ids{kAuto, kRed, kSquare, IDOK, IDCANCEL, kBar}));

        // A page of controls, as a child of the dialog: the first one at first.
        const HWND page = CreateWindowExA(WS_EX_CONTROLPARENT, "#32770", "", WS_CHILD | WS_VISIBLE,
                                          0, 0, 60, 60, dialog, nullptr, nullptr, nullptr);
        SetParent(page, dialog);
        ShowWindow(page, SW_SHOW);
        SetParent(GetDlgItem(dialog, kSquare), page);
        SetFocus(GetDlgItem(dialog, IDCANCEL));
        EXPECT_EQ(Walk(Qt::Key_Tab, 5), (Ids{kBar, kAuto, kRed, IDOK, kSquare}));
        TypeKey(Qt::Key_Return);
        SetWindowLongPtrA(page, GWL_EXSTYLE, 0);
        EXPECT_EQ(Walk(Qt::Key_Tab, 1), (Ids{kSquare})); // by itself
        EXPECT_EQ(commands, Ids{IDOK});
    });
}

TEST(ArrowKeys, MoveInsideAGroupAndCheckTheRadio) {
    InDialog([](HWND dialog) {
        CheckRadioButton(dialog, kRed, kBlue, kRed);
        SetFocus(GetDlgItem(dialog, kRed));
        EXPECT_EQ(Walk(Qt::Key_Down, 3), (Ids{kGreen, kBlue, kRed}));
        EXPECT_EQ(Walk(Qt::Key_Left, 1), (Ids{kBlue}));
        EXPECT_EQ(commands, (Ids{kGreen, kBlue, kRed, kBlue}));
        EXPECT_EQ(IsDlgButtonChecked(dialog, kBlue), BST_CHECKED);
        EXPECT_EQ(IsDlgButtonChecked(dialog, kRed), BST_UNCHECKED);
        EnableWindow(GetDlgItem(dialog, kGreen), 0);
        EXPECT_EQ(Walk(Qt::Key_Up, 1), (Ids{kRed}));
        SetFocus(GetDlgItem(dialog, IDOK));
        commands.clear();
        EXPECT_EQ(Walk(Qt::Key_Right, 2), (Ids{IDCANCEL, IDOK}));
        EXPECT_EQ(commands, Ids{});
    });
}

TEST(Mnemonics, PressButtonsAndFocusWhatATextStandsFor) {
    const struct {
        Qt::Key key;
        int focus;
        Ids expected;
    } kTable[] = {
        {Qt::Key_L, kBar, {}},       {Qt::Key_E, kGreen, {kGreen}}, {Qt::Key_S, kSquare, {kSquare}},
        {Qt::Key_A, kAuto, {kAuto}}, {Qt::Key_Z, kAuto, {}},        {Qt::Key_O, IDOK, {IDOK}},
    };
    InDialog([&kTable](HWND dialog) {
        for (const auto modifiers : {Qt::AltModifier, Qt::NoModifier}) {
            for (const auto& row : kTable) {
                commands.clear();
                TypeKey(row.key, modifiers);
                EXPECT_EQ(FocusId(), row.focus) << row.key;
                EXPECT_EQ(commands, row.expected) << row.key;
            }
        }
        EnableWindow(GetDlgItem(dialog, kAuto), 0);
        commands.clear();
        TypeKey(Qt::Key_A, Qt::AltModifier);
        TypeKey(Qt::Key_O, Qt::ControlModifier);
        EXPECT_EQ(commands, Ids{});
    });
}

TEST(EnterAndEscape, PressTheDefaultAndTheCancelButton) {
    InDialog([](HWND dialog) {
        const struct {
            int focus;
            Qt::Key key;
            Ids expected;
        } kTable[] = {
            {kBar, Qt::Key_Return, {IDOK}},      {kRed, Qt::Key_Enter, {IDOK}},
            {kAuto, Qt::Key_Return, {kAuto}},    {kDrawn, Qt::Key_Return, {IDOK}},
            {kAuto, Qt::Key_Escape, {IDCANCEL}}, {IDCANCEL, Qt::Key_Enter, {IDCANCEL}},
            {kAuto, Qt::Key_Space, {kAuto}},
        };
        for (const auto& row : kTable) {
            SetFocus(GetDlgItem(dialog, row.focus));
            commands.clear();
            TypeKey(row.key);
            EXPECT_EQ(commands, row.expected) << row.focus;
        }
        commands.clear();
        EnableWindow(GetDlgItem(dialog, IDCANCEL), 0);
        TypeKey(Qt::Key_Escape);
        EXPECT_EQ(commands, Ids{});
    });
}

TEST(AskingForAKey, TellsAPressOnce) {
    InDialog([](HWND) {
        EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
        PressKeyForTest(VK_ESCAPE);
        EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), kPressed);
        EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
        EXPECT_EQ(GetAsyncKeyState('A'), 0);
    });
}

TEST(AskingForAKey, TellsNothingOfAPressThatAWindowUsedUp) {
    InDialog([](HWND) {
        TypeKey(Qt::Key_Escape);
        EXPECT_EQ(commands, Ids{IDCANCEL});
        EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), 0);
    });
}

TEST(AskingForAKey, FetchesPressesAndKeepsOtherInputForLater) {
    InDialog([](HWND dialog) {
        if (QGuiApplication::platformName() == "xcb") {
            GTEST_SKIP() << "X11 is asked beside the events";
        }
        QTest::qWait(20); // the display is not asked more often
        QWidget* focus = WidgetForTest(GetFocus());
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            for (const auto key : {Qt::Key_Escape, Qt::Key_Tab}) {
                QCoreApplication::postEvent(focus, new QKeyEvent(type, key, Qt::NoModifier));
            }
        }
        PostMessageA(dialog, WM_COMMAND, 77, 0);
        EXPECT_EQ(GetAsyncKeyState(VK_ESCAPE), kPressed);
        EXPECT_EQ(FocusId(), kBar);
        EXPECT_EQ(commands, Ids{});
        RunPending();
        EXPECT_EQ(commands, Ids{77}); // and not cancelled
        EXPECT_EQ(FocusId(), kRed);
    });
}

TEST(TheCursor, IsTheOneSetLast) {
    InDialog([](HWND) {
        const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
        const HCURSOR wait = LoadCursorA(nullptr, IDC_WAIT);
        EXPECT_EQ(GetCursor(), arrow);
        EXPECT_EQ(SetCursor(wait), arrow);
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        EXPECT_EQ(SetCursor(nullptr), wait);
        EXPECT_EQ(SetCursor(arrow), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    });
}

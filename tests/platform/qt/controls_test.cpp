#include "tests/platform/qt/drive.h"

#include "platform/qt/grab.h"

#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr int kBar = 201;
constexpr int kValue = 202;
constexpr int kRed = 210;
constexpr int kGreen = 211;
constexpr int kBlue = 212;
constexpr int kSquare = 220;
constexpr int kDrawn = 221;

using Scroll = std::pair<int, int>;    // code and place
using Drawing = std::pair<UINT, UINT>; // action and state

std::vector<Scroll> scrolls;
std::vector<int> clicks;
std::vector<Drawing> drawings;
bool follows; // whether the dialog moves the bar
std::function<void(HWND)> drive;

void Follow(HWND bar, int code, int place) {
    const int steps[] = {-1, 1, -10, 10};
    if (code <= SB_PAGEDOWN) {
        SetScrollPos(bar, SB_CTL, GetScrollPos(bar, SB_CTL) + steps[code], 1);
    } else if (code == SB_THUMBPOSITION || code == SB_THUMBTRACK) {
        SetScrollPos(bar, SB_CTL, place, 1);
    }
}

INT_PTR Listen(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        PostMessageA(dialog, WM_USER, 0, 0);
        return 1;
    case WM_USER:
        UpdateWindow(dialog);
        scrolls.clear();
        clicks.clear();
        drawings.clear();
        drive(dialog);
        EndDialog(dialog, 1);
        return 1;
    case WM_HSCROLL: {
        const int place = static_cast<SHORT>(HIWORD(wParam));
        scrolls.push_back({LOWORD(wParam), place});
        EXPECT_EQ(reinterpret_cast<HWND>(lParam), GetDlgItem(dialog, kBar));
        if (follows) {
            Follow(reinterpret_cast<HWND>(lParam), LOWORD(wParam), place);
        }
        return 1;
    }
    case WM_COMMAND:
        EXPECT_EQ(HIWORD(wParam), BN_CLICKED);
        EXPECT_EQ(reinterpret_cast<HWND>(lParam), GetDlgItem(dialog, LOWORD(wParam)));
        clicks.push_back(LOWORD(wParam));
        return 1;
    case WM_DRAWITEM: {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        drawings.push_back({item.itemAction, item.itemState});
        FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        EXPECT_EQ(item.CtlType, ODT_BUTTON);
        EXPECT_EQ(item.CtlID, wParam);
        return 1;
    }
    default:
        return 0;
    }
}

void InDialog(std::function<void(HWND)> action) {
    drive = std::move(action);
    follows = true;
    EXPECT_EQ(DialogBoxParamA(TestModule(), MAKEINTRESOURCEA(100), nullptr, Listen, 0), 1);
    RunPending();
}

QPoint PartOf(HWND bar, QStyle::SubControl part) {
    class Opened : public QScrollBar {
    public:
        using QScrollBar::initStyleOption;
    };
    auto* widget = static_cast<QScrollBar*>(WidgetForTest(bar));
    QStyleOptionSlider option;
    (widget->*&Opened::initStyleOption)(&option);
    return widget->style()->subControlRect(QStyle::CC_ScrollBar, &option, part, widget).center();
}

HWND BarAt(HWND dialog, int minimum, int maximum, int position) {
    const HWND bar = GetDlgItem(dialog, kBar);
    SetScrollRange(bar, SB_CTL, minimum, maximum, 0);
    SetScrollPos(bar, SB_CTL, position, 0);
    return bar;
}

std::string TextOf(HWND dialog, int id) {
    char text[32];
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}

} // namespace

TEST(AScrollBar, TellsWhatTheMouseDidAndLeavesTheMoveToTheDialog) {
    InDialog([](HWND dialog) {
        const struct {
            QStyle::SubControl part;
            int code;
            int after;
        } kTable[] = {
            {QStyle::SC_ScrollBarSubLine, SB_LINEUP, 49},
            {QStyle::SC_ScrollBarAddLine, SB_LINEDOWN, 51},
            {QStyle::SC_ScrollBarSubPage, SB_PAGEUP, 40},
            {QStyle::SC_ScrollBarAddPage, SB_PAGEDOWN, 60},
        };
        const HWND bar = GetDlgItem(dialog, kBar);
        for (const auto& row : kTable) {
            for (const bool moves : {true, false}) {
                follows = moves;
                BarAt(dialog, 0, 100, 50);
                scrolls.clear();
                ClickMouse(bar, PartOf(bar, row.part));
                EXPECT_EQ(scrolls, (std::vector<Scroll>{{row.code, 0}, {SB_ENDSCROLL, 0}}));
                EXPECT_EQ(GetScrollPos(bar, SB_CTL), moves ? row.after : 50);
            }
        }
    });
}

TEST(AScrollBar, TellsWhatTheKeysDid) {
    const struct {
        Qt::Key key;
        int code;
    } kTable[] = {
        {Qt::Key_Left, SB_LINEUP},   {Qt::Key_Up, SB_LINEUP},     {Qt::Key_Right, SB_LINEDOWN},
        {Qt::Key_Down, SB_LINEDOWN}, {Qt::Key_PageUp, SB_PAGEUP}, {Qt::Key_PageDown, SB_PAGEDOWN},
        {Qt::Key_Home, SB_TOP},      {Qt::Key_End, SB_BOTTOM},
    };
    InDialog([&kTable](HWND dialog) {
        SetFocus(GetDlgItem(dialog, kBar));
        std::vector<Scroll> expected;
        for (const auto& row : kTable) {
            TypeKey(row.key);
            expected.push_back({row.code, 0});
            expected.push_back({SB_ENDSCROLL, 0});
        }
        EXPECT_EQ(scrolls, expected);
    });
}

TEST(AScrollBar, TellsEveryPlaceOfADraggedThumb) {
    InDialog([](HWND dialog) {
        const HWND bar = BarAt(dialog, -100, 100, 0);
        const QPoint thumb = PartOf(bar, QStyle::SC_ScrollBarSlider);
        PressMouse(bar, thumb);
        DragMouse(bar, thumb - QPoint(20, 0));
        DragMouse(bar, thumb - QPoint(500, 0));
        ReleaseMouse(bar, thumb - QPoint(500, 0));
        ASSERT_EQ(scrolls.size(), 4u);
        const int place = scrolls[0].second;
        EXPECT_LT(place, 0);
        EXPECT_GT(place, -100);
        EXPECT_EQ(scrolls[0].first, SB_THUMBTRACK);
        scrolls.erase(scrolls.begin());
        const std::vector<Scroll> expected = {
            {SB_THUMBTRACK, -100}, {SB_THUMBPOSITION, -100}, {SB_ENDSCROLL, 0}};
        EXPECT_EQ(scrolls, expected);
        EXPECT_EQ(GetScrollPos(bar, SB_CTL), -100);
    });
}

TEST(AScrollBar, RepeatsWhileAnArrowIsHeld) {
    InDialog([](HWND dialog) {
        const HWND bar = BarAt(dialog, 0, 2, 1);
        const QPoint arrow = PartOf(bar, QStyle::SC_ScrollBarAddLine);
        PressMouse(bar, arrow);
        EXPECT_TRUE(QTest::qWaitFor([] { return scrolls.size() >= 3; }));
        ReleaseMouse(bar, arrow);
        EXPECT_EQ(scrolls[2], (Scroll{SB_LINEDOWN, 0}));
        EXPECT_EQ(scrolls.back(), (Scroll{SB_ENDSCROLL, 0}));
        EXPECT_EQ(GetScrollPos(bar, SB_CTL), 2);
    });
}

TEST(AScrollBar, HearsTheLeftButtonOnly) {
    InDialog([](HWND dialog) {
        const HWND bar = BarAt(dialog, 0, 100, 50);
        for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
            PressMouse(bar, PartOf(bar, QStyle::SC_ScrollBarAddLine), button);
            ReleaseMouse(bar, PartOf(bar, QStyle::SC_ScrollBarAddLine), button);
        }
        QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(WidgetForTest(bar), &wheel);
        EXPECT_EQ(scrolls, std::vector<Scroll>{});
        EXPECT_EQ(GetScrollPos(bar, SB_CTL), 50);
    });
}

TEST(AScrollBar, KeepsItsPositionInItsRange) {
    InDialog([](HWND dialog) {
        const HWND bar = BarAt(dialog, -100, 100, 20);
        EXPECT_EQ(SetScrollPos(bar, SB_CTL, -500, 1), 20);
        EXPECT_EQ(SetScrollPos(bar, SB_CTL, 500, 1), -100);
        EXPECT_EQ(GetScrollPos(bar, SB_CTL), 100);
        EXPECT_TRUE(SetScrollRange(bar, SB_CTL, 2, 32, 1));
        EXPECT_EQ(GetScrollPos(bar, SB_CTL), 32);
        int low = 0;
        int high = 0;
        EXPECT_TRUE(GetScrollRange(bar, SB_CTL, &low, &high));
        EXPECT_EQ(low, 2);
        EXPECT_EQ(high, 32);
        EXPECT_EQ(GetScrollPos(bar, 0), 0); // not a bar of the window's frame
        EXPECT_FALSE(SetScrollRange(GetDlgItem(dialog, kRed), SB_CTL, 0, 9, 1));
        EXPECT_EQ(scrolls, std::vector<Scroll>{});
    });
}

TEST(Buttons, TellTheirClicksAndKeepTheirMarks) {
    InDialog([](HWND dialog) {
        for (const int id : {kRed, kBlue, kSquare}) {
            ClickMouse(GetDlgItem(dialog, id), {8, MiddleOf(GetDlgItem(dialog, id)).y()});
        }
        const auto marks = [dialog] {
            std::vector<UINT> states;
            for (const int id : {kRed, kGreen, kBlue, kSquare}) {
                states.push_back(IsDlgButtonChecked(dialog, id));
            }
            return states;
        };
        EXPECT_EQ(marks(), (std::vector<UINT>{0, 0, 1, 1}));
        SendDlgItemMessageA(dialog, kSquare, BM_CLICK, 0, 0);
        EXPECT_EQ(clicks, (std::vector<int>{kRed, kBlue, kSquare, kSquare}));
        EXPECT_TRUE(CheckRadioButton(dialog, kRed, kBlue, kGreen));
        EXPECT_EQ(marks(), (std::vector<UINT>{0, 1, 0, 0}));
        SendDlgItemMessageA(dialog, kSquare, BM_SETCHECK, BST_CHECKED, 0);
        EXPECT_EQ(marks(), (std::vector<UINT>{0, 1, 0, 1}));
        EnableWindow(GetDlgItem(dialog, kRed), 0);
        ClickMouse(GetDlgItem(dialog, kRed), {8, 8});
        EXPECT_EQ(clicks.size(), 4u); // the program's own marks and disabled buttons tell nothing
    });
}

TEST(AnOwnerDrawnButton, IsDrawnByItsParentWhenItChanges) {
    InDialog([](HWND dialog) {
        const HWND button = GetDlgItem(dialog, kDrawn);
        GrabWindow(button);
        drawings.clear();
        PressMouse(button, {3, 3});
        ReleaseMouse(button, {3, 3});
        const std::vector<Drawing> expected = {{ODA_SELECT, ODS_SELECTED}, {ODA_SELECT, 0}};
        EXPECT_EQ(drawings, expected);
        EXPECT_EQ(clicks, std::vector<int>{kDrawn});
        RunPending();
        drawings.clear();
        InvalidateRect(button, nullptr, 0);
        RunPending();
        SetFocus(button);
        EnableWindow(button, 0);
        RunPending();
        ASSERT_GE(drawings.size(), 3u);
        EXPECT_EQ(drawings[0], (Drawing{ODA_DRAWENTIRE, 0}));
        EXPECT_EQ(drawings[1], (Drawing{ODA_FOCUS, ODS_FOCUS}));
        EXPECT_EQ(drawings.back(), (Drawing{ODA_DRAWENTIRE, ODS_DISABLED}));
        EXPECT_EQ(GrabWindow(button).pixel(4, 4) & 0xFFFFFF, 0u);
        drawings.clear();
        RunPending();
        EXPECT_EQ(drawings, std::vector<Drawing>{}); // it comes to rest
    });
}

TEST(Texts, AreShownAsSetAndLookDisabledWhenTheyAre) {
    InDialog([](HWND dialog) {
        const HWND value = GetDlgItem(dialog, kValue);
        EXPECT_TRUE(SetDlgItemInt(dialog, kValue, static_cast<UINT>(-128), 1));
        EXPECT_EQ(TextOf(dialog, kValue), "-128");
        EXPECT_TRUE(SetDlgItemInt(dialog, kValue, 4000000000u, 0));
        EXPECT_EQ(TextOf(dialog, kValue), "4000000000");
        for (const int id : {kValue, kRed, kSquare}) {
            const HWND control = GetDlgItem(dialog, id);
            const QImage before = GrabWindow(control);
            SetDlgItemTextA(dialog, id, "&Gray");
            const QImage changed = GrabWindow(control);
            EXPECT_NE(before, changed);
            EXPECT_FALSE(EnableWindow(control, 0));
            EXPECT_TRUE(EnableWindow(control, 0));
            EXPECT_NE(GrabWindow(control), changed);
            SetDlgItemTextA(dialog, id, "Gray");
            EXPECT_EQ(TextOf(dialog, id), "Gray");
        }
        EXPECT_FALSE(IsWindowEnabled(value));
    });
}

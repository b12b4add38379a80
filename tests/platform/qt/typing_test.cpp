// Edits and drop-down lists.
#include "tests/platform/qt/drive.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace {

constexpr int kText = 240;
constexpr int kDigits = 241;
constexpr int kList = 242;

struct Command {
    int id;
    UINT code;
    bool operator==(const Command&) const = default;
};

void PrintTo(const Command& command, std::ostream* out) {
    *out << command.id << " tells " << command.code;
}

using Commands = std::vector<Command>;
Commands commands;
std::function<void(HWND)> drive;

INT_PTR Listen(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        RunSoon([dialog] {
            commands.clear();
            drive(dialog);
            EndDialog(dialog, 1);
        });
        return 1;
    case WM_COMMAND:
        EXPECT_EQ(reinterpret_cast<HWND>(lParam), GetDlgItem(dialog, LOWORD(wParam)));
        commands.push_back({LOWORD(wParam), HIWORD(wParam)});
        return 1;
    default:
        return 0;
    }
}

void InDialog(std::function<void(HWND)> action) {
    drive = std::move(action);
    EXPECT_EQ(DialogBoxParamA(TestModule(), MAKEINTRESOURCEA(110), nullptr, Listen, 0), 1);
    RunPending();
}

std::string TextOf(HWND dialog, int id) {
    char text[32];
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}

} // namespace

TEST(AnEdit, TellsEveryChangeAtOnceWhoeverMakesIt) {
    InDialog([](HWND dialog) {
        const HWND edit = GetDlgItem(dialog, kText);
        EXPECT_EQ(TextOf(dialog, kText), "7");
        const Commands change = {{kText, EN_UPDATE}, {kText, EN_CHANGE}};
        EXPECT_EQ(static_cast<QLineEdit*>(WidgetForTest(edit))->selectedText(), "7")
            << "what the keys find is selected";
        SetDlgItemInt(dialog, kText, static_cast<UINT>(-12), TRUE);
        EXPECT_EQ(commands, change);
        SetDlgItemInt(dialog, kText, static_cast<UINT>(-12), TRUE);
        EXPECT_EQ(commands.size(), 4u) << "a text like the one before is a change, too";
        commands.clear();
        QTest::keyClicks(WidgetForTest(edit), "3");
        EXPECT_EQ(commands, change);
        EXPECT_EQ(TextOf(dialog, kText), "-123");
    });
}

TEST(AnEdit, TellsWhenTheFocusComesAndGoes) {
    InDialog([](HWND dialog) {
        SetFocus(GetDlgItem(dialog, kText));
        commands.clear();
        TypeKey(Qt::Key_Tab);
        const Commands moved = {{kText, EN_KILLFOCUS}, {kDigits, EN_SETFOCUS}};
        EXPECT_EQ(commands, moved);
    });
}

TEST(AnEdit, TakesOnlyDigitsWhereItsStyleSaysSo) {
    InDialog([](HWND dialog) {
        QWidget* edit = WidgetForTest(GetDlgItem(dialog, kDigits));
        QTest::keyClicks(edit, "1-2 x3");
        EXPECT_EQ(TextOf(dialog, kDigits), "123");
        QGuiApplication::clipboard()->setText("4-5");
        QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(TextOf(dialog, kDigits), "123");
        // The program may set what it likes, and the user may mend it.
        SetDlgItemTextA(dialog, kDigits, "-5");
        QTest::keyClicks(edit, "6");
        EXPECT_EQ(TextOf(dialog, kDigits), "-56");
    });
}

TEST(GetDlgItemIntCall, ReadsTheNumberThatATextBeginsWith) {
    const struct {
        const char* text;
        BOOL isSigned;
        BOOL translated;
        int value;
    } kTable[] = {
        {"12", 1, 1, 12},
        {"-12", 1, 1, -12},
        {" \t7x", 1, 1, 7},
        {"", 1, 0, 0},
        {"-", 1, 0, 0},
        {"x1", 1, 0, 0},
        {"- 1", 1, 0, 0},
        {"-1", 0, 0, 0},
        {"2147483647", 1, 1, INT_MAX},
        {"2147483648", 1, 0, 0},
        {"-2147483648", 1, 1, INT_MIN},
        {"-2147483649", 1, 0, 0},
        {"4294967295", 0, 1, -1},
        {"4294967296", 0, 0, 0},
        {"99999999999999999999999", 0, 0, 0},
    };
    InDialog([&kTable](HWND dialog) {
        for (const auto& row : kTable) {
            SCOPED_TRACE(row.text);
            SetDlgItemTextA(dialog, kText, row.text);
            BOOL translated = 99;
            EXPECT_EQ(GetDlgItemInt(dialog, kText, &translated, row.isSigned),
                      static_cast<UINT>(row.value));
            EXPECT_EQ(translated, row.translated);
        }
        BOOL translated = 99;
        EXPECT_EQ(GetDlgItemInt(dialog, 999, &translated, 1), 0u);
        EXPECT_EQ(translated, 0);
    });
}

TEST(ADropDownList, TellsAChoiceOnceItIsCommitted) {
    InDialog([](HWND dialog) {
        const HWND list = GetDlgItem(dialog, kList);
        auto* box = static_cast<QComboBox*>(WidgetForTest(list));
        EXPECT_EQ(SendMessageA(list, CB_GETCURSEL, 0, 0), CB_ERR);
        int index = 0;
        for (const char* text : {"Circle", "Sine", "Reset"}) {
            EXPECT_EQ(SendMessageA(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)), index++);
        }
        EXPECT_EQ(SendMessageA(list, CB_GETCURSEL, 0, 0), CB_ERR) << "nothing is chosen by itself";
        EXPECT_EQ(SendMessageA(list, CB_SETCURSEL, 1, 0), 1);
        EXPECT_EQ(TextOf(dialog, kList), "Sine");
        EXPECT_TRUE(commands.empty()) << "the program's own choice is not told";

        const Commands told = {{kList, CBN_SELCHANGE}};
        QTest::keyClick(box, Qt::Key_Down);
        EXPECT_EQ(commands, told);
        EXPECT_EQ(SendMessageA(list, CB_GETCURSEL, 0, 0), 2);

        SetFocus(list);
        box->showPopup();
        RunPending();
        commands = told;
        QTest::keyClick(box->view(), Qt::Key_Up);
        EXPECT_EQ(commands, told) << "the list is still open";
        QTest::keyClick(box->view(), Qt::Key_Return);
        EXPECT_EQ(commands.size(), 2u);
        EXPECT_EQ(SendMessageA(list, CB_GETCURSEL, 0, 0), 1);

        EXPECT_EQ(SendMessageA(list, CB_SETCURSEL, 9, 0), CB_ERR);
        EXPECT_EQ(SendMessageA(list, CB_GETCURSEL, 0, 0), CB_ERR);
    });
}

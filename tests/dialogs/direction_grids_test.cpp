#include "resources/module.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/drive/drive.h"

namespace {

constexpr int kFirstCell = 4201;
constexpr int kLastCell = 4208;
constexpr int kFirstArrow = 4362;
constexpr SIZE kArrowSize = {20, 20};
constexpr u32 kUndrawn = 0xFF00FF;

using DirectionGrids = DialogTest;

TEST_F(DirectionGrids, OpenWithTheirDefaultsAndGiveThemBackAtOk) {
    const OpeningCase openings[] = {
        {53, "Motion Blur", {{4209, "10"}}, {4, 10}, {4, 10}},
        {54, "Emboss", {{4209, "2"}}, {5, 3, 2, 0}, {5, 3, 2, 0}},
    };
    for (const OpeningCase& opening : openings) {
        ExpectOpening(opening, colour_.Handle());
        ExpectOpening(opening, grey_.Handle());
    }
}

TEST_F(DirectionGrids, WriteDirectionModeAndDistanceIntoTheCallersBuffer) {
    CallerBuffer buffer;
    RunEffectDialog(54, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
        EXPECT_TRUE(IsChecked(dialog, 4213));
        for (int cell = kFirstCell; cell <= kLastCell; ++cell) {
            ExpectMoves(dialog, {{cell, kClick, {cell - kFirstCell + 1, 3, 2, 0}}});
        }
        for (int mode = 4211; mode <= 4214; ++mode) {
            ExpectMoves(dialog, {{mode, kClick, {8, mode - 4210, 2, 0}}});
        }
        ExpectMoves(dialog, {{4210, SB_PAGEDOWN, {8, 4, 4, 0}, {{4209, "4"}}},
                             {4208, kClick, {8, 4, 4, 0}}}); // the chosen cell once more
        EXPECT_EQ(buffer.First(5), (std::vector<i32>{8, 4, 4, 0, kUntouched}));
    });
    RunEffectDialog(53, colour_.Handle(), buffer.words.data(), [](HWND dialog) {
        ExpectMoves(dialog, {{4202, kClick, {2, 10}}, {4210, SB_PAGEDOWN, {2, 15}}});
    });
    EXPECT_EQ(buffer.First(3), (std::vector<i32>{2, 15, 4}));
}

// How a cell is drawn: the arrow's own picture, or its inversion, on light grey.
enum class Drawn { Plain, Inverted, Otherwise };

Drawn LookAt(HWND dialog, int cell) {
    const Screen button = ScreenOf(GetDlgItem(dialog, cell));
    DrawnPicture picture(Screen(kArrowSize.cx, kArrowSize.cy, kUndrawn));
    const HDC source = CreateCompatibleDC(picture.Dc());
    const HBITMAP bitmap =
        LoadBitmapA(ResourceModule(), MAKEINTRESOURCEA(kFirstArrow + cell - kFirstCell));
    const HGDIOBJ before = SelectObject(source, bitmap);
    BitBlt(picture.Dc(), 0, 0, kArrowSize.cx, kArrowSize.cy, source, 0, 0, SRCCOPY);
    SelectObject(source, before);
    DeleteObject(bitmap);
    DeleteDC(source);
    const Screen arrow = picture.Finish();
    if (button.width < arrow.width || button.height < arrow.height) {
        return Drawn::Otherwise;
    }
    bool plain = true;
    bool inverted = true;
    // The next cell may begin on this one's last pixels, as dialog units are rounded.
    for (int y = 0; y < button.height - 1; ++y) {
        for (int x = 0; x < button.width - 1; ++x) {
            const u32 shown = button.At(x, y);
            const bool onArrow = x < arrow.width && y < arrow.height;
            const u32 drawn = onArrow ? arrow.At(x, y) : 0xC0C0C0;
            plain = plain && shown == drawn;
            inverted = inverted && shown == (onArrow ? ~drawn & 0xFFFFFF : drawn);
        }
    }
    return plain ? Drawn::Plain : inverted ? Drawn::Inverted : Drawn::Otherwise;
}

void ExpectMarked(HWND dialog, int marked) {
    for (int cell = kFirstCell; cell <= kLastCell; ++cell) {
        EXPECT_EQ(LookAt(dialog, cell), cell == marked ? Drawn::Inverted : Drawn::Plain)
            << "cell " << cell << " with " << marked << " marked";
    }
}

// The mark outlasts the dialog from OK to OK, for either effect by itself.
TEST_F(DirectionGrids, MarkTheCellOfTheLastOkUntilAnotherIsChosen) {
    const struct {
        EffectId effect;
        int marked; // at opening
        int chosen;
        bool accept;
    } steps[] = {
        {54, 4208, 4202, false}, {54, 4208, 4201, true}, {53, 4205, 4207, false},
        {53, 4205, 4206, true},  {54, 4201, 4208, true}, {53, 4206, 4205, true},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(testing::Message() << "effect " << step.effect << ", chooses " << step.chosen);
        CallerBuffer buffer;
        RunEffectDialog(step.effect, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
            EXPECT_EQ(GetFocus(), GetDlgItem(dialog, step.marked));
            ExpectMarked(dialog, step.marked);
            Click(dialog, step.chosen);
            ExpectMarked(dialog, step.chosen);
            step.accept ? PressOk(dialog) : PressCancel(dialog);
        });
    }
}

TEST_F(DirectionGrids, CanBeWorkedWithTheKeyboardAlone) {
    CallerBuffer buffer;
    const i32 result = RunEffectDialog(54, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
        // From the marked cell, the last, back by an arrow key and then by Tab.
        for (const int key : {kKeyLeft, kKeySpace}) {
            TypeKey(key);
        }
        ExpectMarked(dialog, 4207);
        TypeKey(kKeyTab, kShift);
        TypeKey(kKeySpace);
        ExpectMarked(dialog, 4206);
        // On to the modes and the bar.
        for (const int key : {kKeyTab, kKeyTab, kKeyTab, kKeyDown, kKeyTab, kKeyRight, kKeyRight}) {
            TypeKey(key);
        }
        EXPECT_EQ(buffer.First(4), (std::vector<i32>{6, 4, 4, 0}));
        TypeKey(kKeyEscape);
    });
    EXPECT_EQ(result, 0);
}

} // namespace

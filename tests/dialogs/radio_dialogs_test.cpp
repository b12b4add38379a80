#include "tests/dialogs/dialog_driver.h"

namespace {

using RadioDialogs = DialogTest;

TEST_F(RadioDialogs, OpenWithTheirDefaultsAndGiveThemBackAtOk) {
    const OpeningCase grid{51, "3D Grid", {}, {3, 0, 0}, {3, 0, 0}};
    const OpeningCase crayon{32, "Sketch", {{4262, "0"}}, {1, 0}, {1, 0}};
    const OpeningCase pencil{32, "Sketch", {{4262, "0"}}, {2, 0}, {2, 0}};
    ExpectOpening(grid, colour_.Handle());
    ExpectOpening(grid, grey_.Handle());
    ExpectOpening(crayon, colour_.Handle());
    ExpectOpening(pencil, grey_.Handle());
}

TEST_F(RadioDialogs, GiveEachRadioOfTheGridItsValue) {
    CallerBuffer buffer;
    EXPECT_EQ(RunEffectDialog(51, colour_.Handle(), buffer.words.data(),
                              [](HWND dialog) {
                                  ExpectMoves(dialog, {{4216, kClick, {1, 0, 0}},
                                                       {4219, kClick, {1, 1, 0}},
                                                       {4222, kClick, {1, 1, 1}},
                                                       {4217, kClick, {2, 1, 1}},
                                                       {4220, kClick, {2, 2, 1}},
                                                       {4218, kClick, {2, 0, 1}},
                                                       {4215, kClick, {3, 0, 1}},
                                                       {4217, kClick, {2, 0, 1}},
                                                       {4220, kClick, {2, 2, 1}}});
                                  PressOk(dialog);
                              }),
              1);
    EXPECT_EQ(buffer.First(4), (std::vector<i32>{2, 2, 1, kUntouched}));
}

TEST_F(RadioDialogs, OfferTheStylesOfASketchAndPencilAloneOnGrey) {
    CallerBuffer buffer;
    RunEffectDialog(32, colour_.Handle(), buffer.words.data(), [](HWND dialog) {
        ExpectMoves(
            dialog,
            {{4291, kClick, {2, 0}}, {4263, SB_PAGEDOWN, {2, 16}}, {4290, kClick, {1, 16}}});
        PressOk(dialog);
    });
    EXPECT_EQ(buffer.First(3), (std::vector<i32>{1, 16, kUntouched}));

    RunEffectDialog(32, grey_.Handle(), buffer.words.data(), [](HWND dialog) {
        EXPECT_FALSE(IsEnabled(dialog, 4290));
        EXPECT_TRUE(IsEnabled(dialog, 4291));
        EXPECT_TRUE(IsChecked(dialog, 4291));
        Click(dialog, 4290);
        ExpectMoves(dialog, {{4263, SB_BOTTOM, {2, 254}}});
        PressOk(dialog);
    });
    EXPECT_EQ(buffer.First(2), (std::vector<i32>{2, 254}));
}

} // namespace

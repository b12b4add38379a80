#include "tests/dialogs/dialog_driver.h"

#include <span>

namespace {

using PairedSliders = DialogTest;

TEST_F(PairedSliders, OpenWithTheirDefaultsAndGiveThemBackAtOk) {
    const OpeningCase openings[] = {
        {2, "Hue and Saturation", {{4262, "0"}, {4264, "0"}}, {0, 0}, {0, 0}},
        {52, "Mosaic", {{4272, "5"}, {4273, "5"}}, {5, 5}, {5, 5}},
        {65, "Ribbon", {{4295, "25"}, {4296, "25"}}, {25, 25, 0}, {25, 25, 0}},
    };
    for (const OpeningCase& opening : openings) {
        ExpectOpening(opening, colour_.Handle());
        ExpectOpening(opening, grey_.Handle());
    }
}

TEST_F(PairedSliders, ShowTheSaturationWithTheOppositeSignOfTheRecord) {
    CallerBuffer buffer;
    RunEffectDialog(2, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
        ExpectMoves(dialog, {{4265, SB_PAGEDOWN, {0, -20}, {{4264, "20%"}}},
                             {4263, SB_PAGEUP, {-30, -20}, {{4262, "-30"}}},
                             {4265, SB_TOP, {-30, 100}, {{4264, "-100%"}}},
                             {4265, SB_BOTTOM, {-30, -100}, {{4264, "100%"}, {4262, "-30"}}}});
        EXPECT_EQ(buffer.First(3), (std::vector<i32>{-30, -100, kUntouched}));
    });
}

TEST_F(PairedSliders, GiveARibbonsFrequencyAmplitudeAndABlackGround) {
    CallerBuffer buffer;
    RunEffectDialog(65, colour_.Handle(), buffer.words.data(), [](HWND dialog) {
        ExpectMoves(dialog, {{4294, SB_BOTTOM, {100, 25, 0}}, {4297, SB_TOP, {100, 0, 0}}});
        PressOk(dialog);
    });
    EXPECT_EQ(buffer.First(4), (std::vector<i32>{100, 0, 0, kUntouched}));
}

// A bar's place and its label, both of Mosaic's two.
void ExpectMosaic(HWND dialog, int width, int height) {
    EXPECT_EQ(GetScrollPos(GetDlgItem(dialog, 4270), SB_CTL), width);
    EXPECT_EQ(GetScrollPos(GetDlgItem(dialog, 4271), SB_CTL), height);
    EXPECT_EQ(TextOf(dialog, 4272), std::to_string(width));
    EXPECT_EQ(TextOf(dialog, 4273), std::to_string(height));
}

TEST_F(PairedSliders, CoupleTheBarsOfASquareMosaic) {
    struct Step {
        int bar, code, thumb;
        int width, height;
    };
    const Step square[] = {
        {4270, SB_LINEDOWN, 0, 6, 6},      {4271, SB_LINEUP, 0, 5, 5},
        {4271, SB_PAGEDOWN, 0, 10, 10},    {4270, SB_PAGEUP, 0, 5, 5},
        {4270, SB_PAGEUP, 0, 2, 2},        {4271, SB_LINEUP, 0, 2, 2},
        {4271, SB_THUMBTRACK, 30, 30, 30}, {4270, SB_PAGEDOWN, 0, 32, 32},
        {4270, SB_THUMBPOSITION, 9, 9, 9}, {4270, SB_TOP, 0, 9, 9},
        {4271, SB_BOTTOM, 0, 9, 9},        {4271, SB_THUMBTRACK, 99, 32, 32},
        {4271, SB_THUMBTRACK, -99, 2, 2},  {4271, SB_THUMBTRACK, 7, 7, 7},
    };
    const Step apart[] = {
        {4270, SB_THUMBTRACK, 20, 20, 7},
        {4271, SB_PAGEDOWN, 0, 20, 12},
        {4270, SB_LINEUP, 0, 19, 12},
        {4271, SB_TOP, 0, 19, 12},
    };
    CallerBuffer buffer;
    const auto expectSteps = [&](HWND dialog, std::span<const Step> steps) {
        for (const Step& step : steps) {
            SCOPED_TRACE(testing::Message() << "bar " << step.bar << ", code " << step.code
                                            << ", thumb " << step.thumb);
            Scroll(dialog, step.bar, step.code, step.thumb);
            ExpectMosaic(dialog, step.width, step.height);
            EXPECT_EQ(buffer.First(3), (std::vector<i32>{step.width, step.height, kUntouched}));
        }
    };
    RunEffectDialog(52, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
        EXPECT_TRUE(IsChecked(dialog, 4275));
        expectSteps(dialog, square);
        TakeAnnouncement(dialog);

        Click(dialog, 4275);
        EXPECT_FALSE(IsChecked(dialog, 4275));
        EXPECT_FALSE(TakeAnnouncement(dialog));
        expectSteps(dialog, apart);
        TakeAnnouncement(dialog);

        // Height jumps to width; the After pane learns of it with the next moved bar.
        Click(dialog, 4275);
        EXPECT_TRUE(IsChecked(dialog, 4275));
        ExpectMosaic(dialog, 19, 19);
        EXPECT_EQ(buffer.First(2), (std::vector<i32>{19, 19}));
        EXPECT_FALSE(TakeAnnouncement(dialog));
        Scroll(dialog, 4271, SB_LINEUP);
        ExpectMosaic(dialog, 18, 18);
        EXPECT_TRUE(TakeAnnouncement(dialog));
    });
}

} // namespace

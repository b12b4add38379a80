// The dialogs that serve several effects, and Unsharp Mask.
#include "tests/dialogs/dialog_driver.h"
#include <zq/zqui.h>

namespace {

using EffectFamilies = DialogTest;

TEST_F(EffectFamilies, OpenAtThreePixelsUnderTheFiltersTitle) {
    const std::pair<EffectId, const char*> filters[] = {
        {8, "Average"}, {17, "Gaussian Blur"}, {21, "Median"}};
    for (const auto& [effect, title] : filters) {
        ExpectOpening({effect, title, {{4209, "3"}}, {3}, {3}}, colour_.Handle());
    }
}

TEST_F(EffectFamilies, TakeMaximumOrMinimumFromTheCallersSecondWord) {
    for (const i32 word : {0, 1, -7, kUntouched}) {
        SCOPED_TRACE(word);
        CallerBuffer buffer;
        buffer.words[1] = word;
        const bool maximum = word != 0;
        ExpectOpening(
            {20, maximum ? "Maximum" : "Minimum", {{4209, "3"}}, {3, word}, {3, maximum ? 1 : 0}},
            colour_.Handle(), buffer);
    }
}

TEST_F(EffectFamilies, OpenAtTheirIntensityUnderTheEffectsTitle) {
    const std::pair<EffectId, const char*> effects[] = {
        {33, "Auto Enhance"}, {34, "Film Grain"}, {35, "Splash"},  {36, "Ripple"},
        {38, "Add Noise"},    {39, "Melting"},    {41, "Fisheye"}, {48, "Cone"},
        {49, "Whirlpool"},    {50, "Spiral"}};
    for (const auto& [effect, title] : effects) {
        ExpectOpening({effect, title, {{4292, "50"}}, {50}, {50}}, colour_.Handle());
    }
    ExpectOpening({37, "Wrinkle", {{4292, "50"}}, {50}, {50, 0}}, colour_.Handle());
    ExpectOpening({40, "Oil Painting", {{4292, "2"}}, {2}, {2}}, colour_.Handle());
}

TEST_F(EffectFamilies, GiveTheChosenIntensityInTheFirstWord) {
    for (const auto& chosen : {std::pair{40, 15}, {37, 100}, {50, 100}}) {
        const i32 largest = chosen.second;
        CallerBuffer buffer;
        EXPECT_EQ(RunEffectDialog(chosen.first, colour_.Handle(), buffer.words.data(),
                                  [&](HWND dialog) {
                                      ExpectMoves(dialog, {{4293, SB_BOTTOM, {largest}}});
                                      PressOk(dialog);
                                  }),
                  1);
        EXPECT_EQ(buffer.First(2), (std::vector<i32>{largest, kUntouched}));
    }
}

// Such a dialog ends with 0 without having been shown; that is no intensity.
TEST_F(EffectFamilies, TakeAnIntensityDialogBelowAWindowThatIsGoneForCancelled) {
    const HWND gone = CreateWindowExA(0, "Static", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                      nullptr, nullptr);
    DestroyWindow(gone);
    CallerBuffer buffer;
    EXPECT_EQ(GetZQParam(33, gone, colour_.Handle(), buffer.words.data()), 0);
    EXPECT_EQ(buffer.words[0], kUntouched);
}

TEST_F(EffectFamilies, GiveTheThreeValuesOfUnsharpMask) {
    ExpectOpening(
        {18, "Unsharp Mask", {{4321, "3"}, {4322, "100"}, {4323, "0"}}, {3, 100, 0}, {3, 100, 0}},
        colour_.Handle());
    CallerBuffer buffer;
    RunEffectDialog(18, colour_.Handle(), buffer.words.data(), [](HWND dialog) {
        ExpectMoves(dialog, {{4324, SB_PAGEDOWN, {7, 100, 0}, {{4321, "7"}}},
                             {4325, SB_TOP, {7, 1, 0}, {{4322, "1"}}},
                             {4326, SB_PAGEDOWN, {7, 1, 16}, {{4323, "16"}}}});
        PressOk(dialog);
    });
    EXPECT_EQ(buffer.First(4), (std::vector<i32>{7, 1, 16, kUntouched}));
}

} // namespace

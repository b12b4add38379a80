#include "tests/dialogs/dialog_driver.h"

namespace {

using ChannelSliderDialogs = DialogTest;

TEST_F(ChannelSliderDialogs, OpenWithTheirDefaultsAndGiveThemBackAtOk) {
    const OpeningCase openings[] = {
        {1, "Brightness and Contrast", {{4262, "0"}, {4264, "0"}}, {0, 0, 0}, {0, 0, 0}},
        {4, "Color Reduction", {{4262, "8"}}, {0, 8}, {0, 8}},
        {7, "Threshold", {{4262, "128"}}, {128}, {128}},
        {22, "Find Contour", {{4279, "128"}}, {1, 0, 128}, {1, 0, 128}},
    };
    for (OpeningCase opening : openings) {
        ExpectOpening(opening, colour_.Handle());
        if (opening.effect == 4) { // without a channel, the caller's own stays
            opening.record = opening.announced = {kUntouched, 8};
        }
        ExpectOpening(opening, grey_.Handle());
    }
}

TEST_F(ChannelSliderDialogs, GiveBackWhatBarsAndRadiosWereSetTo) {
    CallerBuffer buffer;
    EXPECT_EQ(
        RunEffectDialog(1, colour_.Handle(), buffer.words.data(),
                        [](HWND dialog) {
                            Scroll(dialog, 4263, SB_THUMBTRACK, 158);
                            Scroll(dialog, 4265, SB_TOP);
                            Click(dialog, 4268);
                            EXPECT_EQ(AnnouncedRecord(dialog, 3), (std::vector<i32>{2, 30, -128}));
                            PressOk(dialog);
                        }),
        1);
    EXPECT_EQ(buffer.First(4), (std::vector<i32>{2, 30, -128, kUntouched}));

    EXPECT_EQ(RunEffectDialog(22, colour_.Handle(), buffer.words.data(),
                              [](HWND dialog) {
                                  Click(dialog, 4269);
                                  Scroll(dialog, 4280, SB_BOTTOM);
                                  PressOk(dialog);
                              }),
              1);
    EXPECT_EQ(buffer.First(4), (std::vector<i32>{1, 3, 254, kUntouched}));
}

TEST_F(ChannelSliderDialogs, OfferGreyDocumentsNoColourChannels) {
    for (const EffectId effect : {1, 4, 22}) {
        SCOPED_TRACE(effect);
        CallerBuffer buffer;
        RunEffectDialog(effect, grey_.Handle(), buffer.words.data(), [&](HWND dialog) {
            const bool oneChannel = effect != 4;
            EXPECT_EQ(TextOf(dialog, 4266), oneChannel ? "Gray" : "RGB");
            EXPECT_EQ(IsEnabled(dialog, 4266), oneChannel);
            EXPECT_EQ(IsChecked(dialog, 4266), oneChannel);
            for (int radio = 4267; radio <= 4269; ++radio) {
                EXPECT_FALSE(IsEnabled(dialog, radio));
                EXPECT_FALSE(IsChecked(dialog, radio));
            }
        });
    }
}

} // namespace

#include "editors/super_window.h"
#include "editors/tone_graph.h"
#include "engine/colour/tone_adjustment.h"
#include "platform/qt/graphics_testing.h"
#include "platform/qt/window_testing.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/drive/drive.h"
#include <zq/zqui.h>

namespace {

constexpr EffectId kToneAdjustment = 67;

class ToneAdjustmentDialog : public DialogTest {
protected:
    i32 Run(const TestDocument& document, const DialogScript& script) {
        return RunEffectDialog(kToneAdjustment, document.Handle(), buffer_.words.data(), script);
    }

    CallerBuffer buffer_;
};

TEST_F(ToneAdjustmentDialog, OpensNeutralAndGivesItsRecordAtOk) {
    const OpeningCase opening{67,
                              "Tone Adjustment",
                              {{4310, "0"}, {4311, "0"}, {4312, "0"}, {4266, "RGB"}},
                              {0, 0, 0, 0},
                              {0, 0, 0, 0}};
    ExpectOpening(opening, colour_.Handle());
    EXPECT_EQ(Run(colour_,
                  [](HWND dialog) {
                      ExpectMoves(dialog, {{4313, SB_PAGEDOWN, {10, 0, 0, 0}, {{4310, "10"}}},
                                           {4314, SB_LINEUP, {10, -1, 0, 0}, {{4311, "-1"}}},
                                           {4315, SB_TOP, {10, -1, -100, 0}, {{4312, "-100"}}},
                                           {4269, kClick, {10, -1, -100, 3}},
                                           {4314, SB_BOTTOM, {10, 100, -100, 3}}});
                      PressOk(dialog);
                  }),
              1);
    EXPECT_EQ(buffer_.First(5), (std::vector<i32>{10, 100, -100, 3, kUntouched}));
    buffer_ = {};
    EXPECT_EQ(Run(colour_, [](HWND dialog) { Scroll(dialog, 4313, SB_TOP); }), 0);
    EXPECT_EQ(buffer_.words[0], kUntouched);
}

TEST_F(ToneAdjustmentDialog, OffersGreyDocumentsOneChannel) {
    Run(grey_, [](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, 4266), "Gray");
        EXPECT_TRUE(IsChecked(dialog, 4266) && IsEnabled(dialog, 4266));
        for (const int radio : {4267, 4268, 4269}) {
            EXPECT_FALSE(IsEnabled(dialog, radio));
        }
    });
}

// The graph as it must look, from plain pixels.
Screen ExpectedGraph(const CountTable& counts, const ToneCurve& curve, COLORREF colour, int side,
                     int room) {
    Screen graph(side, side, 0xC0C0C0);
    for (int i = 0; i < side - 1; ++i) {
        graph.At(i, 0) = 0xFFFFFF;
        graph.At(0, i) = 0xFFFFFF;
    }
    for (int i = 0; i < side; ++i) {
        graph.At(i, side - 1) = 0x808080;
        graph.At(side - 1, i) = 0x808080;
    }
    const BarTable bars = MakeBars(counts, room);
    for (int tone = 0; bars && tone < 256; ++tone) {
        for (int y = bars[static_cast<std::size_t>(tone)]; y < side - 1; ++y) {
            graph.At(tone * (side - 2) / 255 + 1, y) = 0x808080;
        }
    }
    DrawnPicture picture(graph);
    const HDC dc = picture.Dc();
    const HPEN pen = CreatePen(PS_SOLID, 1, colour);
    const HGDIOBJ before = SelectObject(dc, pen);
    MoveToEx(dc, 2, side - 2, nullptr);
    const int width = side - 4;
    const int height = side - 2;
    for (int i = 0; i <= width; ++i) {
        const int tone = (width / 2 + 255 * i) / width;
        const int rise = (curve[static_cast<std::size_t>(tone)] * (height - 2) + 127) / 255;
        LineTo(dc, i + 2, height - rise);
    }
    SelectObject(dc, before);
    DeleteObject(pen);
    return picture.Finish();
}

void ExpectGraph(HWND dialog, const CountTable& counts, const ToneCurve& curve, COLORREF colour) {
    const Screen shown = ScreenOf(GetDlgItem(dialog, 4320));
    ASSERT_EQ(shown.width, shown.height);
    // Bars are made for the room that the graph had before it became a square.
    const int side = shown.width;
    EXPECT_TRUE(shown == ExpectedGraph(counts, curve, colour, side, side - 2) ||
                shown == ExpectedGraph(counts, curve, colour, side, side));
}

TEST_F(ToneAdjustmentDialog, DrawsTheChannelsBarsAndTheDoubledCurve) {
    const Histogram histogram = CountTones(colour_.Layer(0).image, false);
    const std::size_t objects = LiveGdiObjectCount();
    Run(colour_, [&](HWND dialog) {
        ExpectGraph(dialog, histogram.channels[0], BuildToneTable(0, 0, 0), 0);
        Scroll(dialog, 4313, SB_THUMBTRACK, 60);
        Scroll(dialog, 4314, SB_THUMBTRACK, -30);
        Scroll(dialog, 4315, SB_THUMBTRACK, 20);
        constexpr COLORREF kColours[] = {0x000000, 0x0000FF, 0x00FF00, 0xFF0000};
        for (const int channel : {0, 3, 1, 2}) {
            SCOPED_TRACE(channel);
            Click(dialog, 4266 + channel);
            const auto index = static_cast<std::size_t>(channel);
            ExpectGraph(dialog, histogram.channels[index], BuildToneTable(120, -60, 40),
                        kColours[index]);
        }
    });
    EXPECT_EQ(LiveGdiObjectCount(), objects);

    // The curve starts anew, and grey pictures have their own bars.
    const Histogram grey = CountTones(grey_.Layer(0).image, true);
    Run(grey_,
        [&](HWND dialog) { ExpectGraph(dialog, grey.channels[0], BuildToneTable(0, 0, 0), 0); });
}

TEST_F(ToneAdjustmentDialog, FindsTheEndPointsOfTheCheckedChannel) {
    // Blue 10 to 200, green 90, red 50 to 120.
    const OwnedBlock colours =
        MakeColourDib(2, {Bgr{10, 90, 120}, Bgr{200, 90, 50}, Bgr{60, 90, 60}, Bgr{30, 90, 80}});
    struct {
        int radio;
        ImageClass kind;
        std::vector<u8> greyLevels; // instead of the colours
        const char* highlight;
        const char* shadow;
    } const cases[] = {
        {4266, ImageClass::Colour, {}, "28", "-5"},
        {4267, ImageClass::Colour, {}, "68", "-25"},
        {4268, ImageClass::Colour, {}, "83", "-45"},
        {4269, ImageClass::Colour, {}, "28", "-5"},
        {4266, ImageClass::Grey, {10, 77, 200}, "28", "-5"},
        {4266, ImageClass::Grey, {0, 255}, "0", "0"},
        {4266, ImageClass::Colour, {255}, "0", "-100"},
        {4266, ImageClass::Mono, {}, "100", "-100"}, // nothing is counted
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(testing::Message() << "radio " << test.radio << ", " << test.highlight);
        TestDocument document(2, 2, test.kind);
        if (!test.greyLevels.empty()) {
            document.SetImage(0, MakeGreyDib(1, test.greyLevels));
        } else if (test.kind == ImageClass::Colour) {
            document.SetImage(0, MakeBlock(BytesOf(colours.Handle())));
        }
        Run(document, [&](HWND dialog) {
            Scroll(dialog, 4314, SB_THUMBPOSITION, 7);
            Click(dialog, test.radio);
            TakeAnnouncement(dialog);
            Click(dialog, 4223);
            EXPECT_TRUE(TakeAnnouncement(dialog));
            EXPECT_EQ(TextOf(dialog, 4310), test.highlight);
            EXPECT_EQ(TextOf(dialog, 4311), "7");
            EXPECT_EQ(TextOf(dialog, 4312), test.shadow);
            EXPECT_EQ(std::to_string(AnnouncedRecord(dialog, 4)[0]), test.highlight);
        });
    }
}

TEST_F(ToneAdjustmentDialog, HasItsClassOnlyWhileItIsOpen) {
    const std::size_t classes = RegisteredClassCount();
    Run(colour_, [&](HWND) { EXPECT_EQ(RegisteredClassCount(), classes + 1); });
    EXPECT_EQ(RegisteredClassCount(), classes);

    ASSERT_TRUE(RegisterSuperWindow(nullptr));
    EXPECT_EQ(GetZQParam(kToneAdjustment, nullptr, colour_.Handle(), buffer_.words.data()), 0);
    EXPECT_EQ(buffer_.words[0], kUntouched);
    UnregisterSuperWindow(nullptr);
}

// Whichever allocation fails, a person can work on. Without counts there are no bars, and Auto
// leaves the controls alone.
TEST_F(ToneAdjustmentDialog, WorksWithoutBarsWhenMemoryIsShort) {
    i32 result = 0;
    std::size_t runsWithoutCounts = 0;
    const auto run = [&] {
        buffer_ = {};
        result = Run(colour_, [&](HWND dialog) {
            Scroll(dialog, 4313, SB_BOTTOM);
            const Screen before = ScreenOf(GetDlgItem(dialog, 4320));
            Click(dialog, 4223);
            if (TextOf(dialog, 4310) == "100") {
                ++runsWithoutCounts;
                EXPECT_EQ(before.At(before.width / 2, before.height - 2), 0xC0C0C0u);
            }
            PressOk(dialog);
        });
    };
    FailEachAllocation(run, [&](bool) {
        EXPECT_EQ(result, 1);
        EXPECT_EQ(buffer_.First(5), (std::vector<i32>{buffer_.words[0], 0, 0, 0, kUntouched}));
    });
    EXPECT_EQ(runsWithoutCounts, kChannels);
}

TEST(ToneGraph, BecomesASquareInTheMiddleOfItsPlace) {
    ASSERT_TRUE(RegisterSuperWindow(nullptr));
    const HWND parent = CreateWindowExA(0, kSuperWindowClass, "", WS_POPUP, 40, 30, 200, 200,
                                        nullptr, nullptr, nullptr, nullptr);
    struct {
        RECT before, after; // left, top, width, height
    } const cases[] = {
        {{5, 7, 30, 20}, {11, 8, 18, 18}},
        {{5, 7, 20, 31}, {6, 14, 18, 18}},
        {{5, 7, 20, 20}, {5, 7, 20, 20}},
    };
    for (const auto& test : cases) {
        const HWND graph = CreateWindowExA(0, kSuperWindowClass, "", WS_CHILD, test.before.left,
                                           test.before.top, test.before.right, test.before.bottom,
                                           parent, nullptr, nullptr, nullptr);
        MakeGraphSquare(graph);
        RECT place{};
        GetWindowRect(graph, &place);
        POINT corner{place.left, place.top};
        ScreenToClient(parent, &corner);
        EXPECT_EQ(corner.x, test.after.left);
        EXPECT_EQ(corner.y, test.after.top);
        EXPECT_EQ(place.right - place.left, test.after.right);
        EXPECT_EQ(place.bottom - place.top, test.after.bottom);
        DestroyWindow(graph);
    }
    DestroyWindow(parent);
    UnregisterSuperWindow(nullptr);
}

} // namespace

#include "dialogs/catalogue.h"
#include "dialogs/scroll_bars.h"
#include "library/startup.h"
#include "preview/preview_control.h"
#include "resources/module.h"
#include "resources/resource.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/support/dib_maker.h"
#include "tests/support/document_maker.h"
#include "tests/support/leak_guard.h"
#include <zq/engine.h>
#include <zq/zqui.h>

#include <cstring>

namespace {

constexpr i32 kUntouched = 0x5A5A5A5A;

// A caller's buffer with a guard behind the largest record of these dialogs.
struct CallerBuffer {
    std::array<i32, 5> words;
    CallerBuffer() { words.fill(kUntouched); }
    std::vector<i32> First(std::size_t count) const {
        return {words.begin(), words.begin() + static_cast<std::ptrdiff_t>(count)};
    }
};

class ChannelSliderDialogs : public LeakGuardTest {
protected:
    static void SetUpTestSuite() { LibraryEntry(ResourceModule()); }

    // What the After pane would run its effect with.
    static std::vector<i32> AnnouncedRecord(HWND dialog, std::size_t words) {
        const PreviewControl* after = PreviewControlOf(GetDlgItem(dialog, IDC_AFTER));
        std::vector<i32> record(words, kUntouched);
        if (after == nullptr || after->params == nullptr) {
            ADD_FAILURE() << "no record was announced";
        } else {
            std::memcpy(record.data(), after->params, words * sizeof(i32));
        }
        return record;
    }

    // True once for each announcement.
    static bool TakeAnnouncement(HWND dialog) {
        PreviewControl* after = PreviewControlOf(GetDlgItem(dialog, IDC_AFTER));
        return after != nullptr && std::exchange(after->dirty, 0) != 0;
    }

    TestDocument colour_{64, 48};
    TestDocument grey_{64, 48, ImageClass::Grey};
};

// What each dialog shows and announces when it opens, and what OK without a touch gives.
struct OpeningCase {
    EffectId effect;
    std::vector<std::pair<int, const char*>> labels;
    std::vector<i32> record;
    std::vector<i32> greyRecord;
};

const OpeningCase kOpenings[] = {
    {1, {{4262, "0"}, {4264, "0"}}, {0, 0, 0}, {0, 0, 0}},
    {4, {{4262, "8"}}, {0, 8}, {kUntouched, 8}},
    {7, {{4262, "128"}}, {128}, {128}},
    {22, {{4279, "128"}}, {1, 0, 128}, {1, 0, 128}},
};

TEST_F(ChannelSliderDialogs, OpenWithTheirDefaultsAndGiveThemBackAtOk) {
    for (const OpeningCase& opening : kOpenings) {
        for (const TestDocument* document : {&colour_, &grey_}) {
            SCOPED_TRACE(testing::Message()
                         << "effect " << opening.effect << (document == &grey_ ? ", grey" : ""));
            const std::vector<i32>& record =
                document == &grey_ ? opening.greyRecord : opening.record;
            CallerBuffer buffer;
            const i32 result = RunEffectDialog(
                opening.effect, document->Handle(), buffer.words.data(), [&](HWND dialog) {
                    EXPECT_EQ(TitleOf(dialog), FindEffectRow(opening.effect)->title);
                    for (const auto& [label, text] : opening.labels) {
                        EXPECT_EQ(TextOf(dialog, label), text);
                    }
                    EXPECT_EQ(AnnouncedRecord(dialog, record.size()), record);
                    EXPECT_TRUE(TakeAnnouncement(dialog));
                    PressOk(dialog);
                });
            EXPECT_EQ(result, 1);
            EXPECT_EQ(buffer.First(record.size()), record);
            EXPECT_EQ(buffer.words[record.size()], kUntouched) << "written beyond the record";
        }
    }
}

// The caller's buffer while the dialog runs and after Cancel.
TEST_F(ChannelSliderDialogs, TouchTheCallersBufferOnlyAtOkOrLiveAsTheirCatalogueRowSays) {
    for (const EffectRow& row : EffectCatalogue()) {
        SCOPED_TRACE(row.title);
        CallerBuffer buffer;
        const ScrollBarRow& bar = ScrollBarsOf(row.dialog, row.id).front();
        std::vector<i32> whileOpen;
        const i32 result =
            RunEffectDialog(row.id, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
                Scroll(dialog, bar.bar, SB_PAGEDOWN);
                whileOpen = buffer.First(5);
                if (row.written == RecordWritten::Live) {
                    EXPECT_EQ(AnnouncedRecord(dialog, 2), buffer.First(2));
                }
                PressCancel(dialog);
            });
        EXPECT_EQ(result, 0);
        const bool live = row.written == RecordWritten::Live;
        EXPECT_EQ(buffer.First(5), whileOpen);
        EXPECT_EQ(buffer.words[0] != kUntouched, live);
        EXPECT_EQ(buffer.words[row.recordBytes / 4], kUntouched) << "written beyond the record";
    }
}

TEST_F(ChannelSliderDialogs, FollowEveryScrollCodeWithinTheirRange) {
    struct Step {
        int code;
        int thumb;
        int position; // -1: nothing happens
    };
    for (const EffectRow& row : EffectCatalogue()) {
        for (const ScrollBarRow& bar : ScrollBarsOf(row.dialog, row.id)) {
            const Step steps[] = {
                {SB_LINEUP, 0, bar.start - bar.line},
                {SB_PAGEDOWN, 0, std::min(bar.maximum, bar.start - bar.line + bar.page)},
                {SB_TOP, 0, bar.minimum},
                {SB_LINEUP, 0, bar.minimum},
                {SB_PAGEUP, 0, bar.minimum},
                {SB_LINEDOWN, 0, bar.minimum + bar.line},
                {SB_BOTTOM, 0, bar.maximum},
                {SB_PAGEDOWN, 0, bar.maximum},
                {SB_LINEDOWN, 0, bar.maximum},
                {SB_PAGEUP, 0, bar.maximum - bar.page},
                {SB_THUMBTRACK, 77, 77},
                {SB_THUMBPOSITION, 33, 33},
                {SB_ENDSCROLL, 99, -1},
                {9, 99, -1},
                {SB_THUMBTRACK, -5, bar.minimum},
                {SB_THUMBTRACK, 30000, bar.maximum},
            };
            CallerBuffer buffer;
            RunEffectDialog(row.id, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
                TakeAnnouncement(dialog);
                int position = bar.start;
                for (const Step& step : steps) {
                    SCOPED_TRACE(testing::Message() << row.title << ", bar " << bar.bar << ", code "
                                                    << step.code << ", thumb " << step.thumb);
                    Scroll(dialog, bar.bar, step.code, step.thumb);
                    position = step.position == -1 ? position : step.position;
                    EXPECT_EQ(ScrollBarPosition(dialog, bar.bar), position);
                    EXPECT_EQ(TextOf(dialog, bar.label), std::to_string(position - bar.zero));
                    EXPECT_EQ(TakeAnnouncement(dialog), step.position != -1);
                }
            });
        }
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

// The After pane shows what the engine gives for the record, at the next tick and not before.
TEST_F(ChannelSliderDialogs, BringTheNewAfterPictureAtTheNextTick) {
    CallerBuffer buffer;
    RunEffectDialog(1, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
        const HWND after = GetDlgItem(dialog, IDC_AFTER);
        SendMessageA(after, WM_TIMER, kPreviewTimer, 0);
        const auto layerBytes = [&] {
            const BlockLock lock(PreviewControlOf(after)->previewDocument);
            return BytesOf(reinterpret_cast<const ImageDocument*>(lock.Bytes())->layers[0].image);
        };
        const std::vector<u8> untouched = layerBytes();
        Scroll(dialog, 4263, SB_BOTTOM);
        EXPECT_EQ(layerBytes(), untouched);
        SendMessageA(after, WM_TIMER, kPreviewTimer, 0);

        const OwnedBlock source = MakeBlock(untouched);
        const BrightnessContrastParams params{0, 127, 0};
        const OwnedBlock expected(RunEffect(source.Handle(), 1, &params));
        ASSERT_TRUE(expected);
        EXPECT_EQ(layerBytes(), BytesOf(expected.Handle()));
    });
}

TEST_F(ChannelSliderDialogs, OpenAndCloseOnDocumentsThatCannotBeShown) {
    TestDocument withoutMask(16, 16);
    withoutMask.SetMask(0, OwnedBlock());
    TestDocument outOfRange(16, 16);
    outOfRange.Change([](ImageDocument& document) { document.currentLayer = 7; });
    const OwnedBlock tooShort(AllocateBlock(100));
    constexpr DocHandle kStale = 0x7FFF0001;
    for (const DocHandle document :
         {withoutMask.Handle(), outOfRange.Handle(), tooShort.Handle(), DocHandle{0}, kStale}) {
        for (const EffectRow& row : EffectCatalogue()) {
            CallerBuffer buffer;
            EXPECT_EQ(RunEffectDialog(row.id, document, buffer.words.data(),
                                      [](HWND dialog) {
                                          const HWND after = GetDlgItem(dialog, IDC_AFTER);
                                          SendMessageA(after, WM_TIMER, kPreviewTimer, 0);
                                          PressOk(dialog);
                                      }),
                      1);
        }
    }
}

} // namespace

// What holds for every dialog of the catalogue.
#include "dialogs/catalogue.h"
#include "dialogs/scroll_bars.h"
#include "image/masked_effect.h"
#include "preview/preview_control.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/support/dib_maker.h"

#include <optional>
#include <set>

namespace {

using DialogFrame = DialogTest;

// Moves the first bar of a dialog; where there is none, types into a field or clicks a radio.
void ChangeSomething(HWND dialog, const EffectRow& row) {
    constexpr int kGridMedium = 4216;
    constexpr int kFirstCell = 4237;
    constexpr int kVertical = 4300;
    const auto bars = ScrollBarsOf(row.dialog, row.id);
    if (row.id == 25) {
        SetDlgItemInt(dialog, kFirstCell, 5, TRUE);
    } else if (bars.empty()) {
        Click(dialog, row.id == 51 ? kGridMedium : kVertical);
    } else {
        Scroll(dialog, bars.front().bar, SB_PAGEDOWN);
    }
}

// The buffer while the dialog runs and after it, for the four ways in which a record goes back.
TEST_F(DialogFrame, WritesTheCallersBufferAtOkOrLiveAndNeverBeyondTheRecord) {
    for (const EffectRow& row : EffectCatalogue()) {
        for (const bool accept : {false, true}) {
            SCOPED_TRACE(testing::Message() << row.title << (accept ? ", OK" : ", Cancel"));
            const bool live = row.written == RecordWritten::Live;
            const std::size_t words = row.recordBytes / sizeof(i32);
            CallerBuffer buffer;
            std::vector<i32> announced;
            std::vector<i32> unchanged(words, kUntouched);
            const auto expectBuffer = [&](HWND dialog) {
                announced = AnnouncedRecord(dialog, words);
                EXPECT_EQ(buffer.First(words), live ? announced : unchanged);
            };
            const i32 result =
                RunEffectDialog(row.id, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
                    if (row.written == RecordWritten::AtOpeningAndOk) {
                        unchanged = AnnouncedRecord(dialog, words);
                    }
                    expectBuffer(dialog);
                    const std::vector<i32> atOpening(announced.begin(), announced.end());
                    ChangeSomething(dialog, row);
                    expectBuffer(dialog);
                    EXPECT_NE(announced, atOpening);
                    accept ? PressOk(dialog) : PressCancel(dialog);
                });
            EXPECT_EQ(result, accept ? 1 : 0);
            EXPECT_EQ(buffer.words[0], live || accept ? announced[0] : unchanged[0]);
            EXPECT_EQ(buffer.words[words], kUntouched) << "written beyond the record";
        }
    }
}

// The steps of a bar in words: what the label shows after SB_TOP, then SB_PAGEDOWN, then
// SB_LINEDOWN, and after SB_BOTTOM.
struct BarCase {
    EffectId effect;
    int bar;
    int label;
    const char* shown[4];
};

const BarCase kBars[] = {
    {1, 4263, 4262, {"-128", "-112", "-111", "127"}},
    {1, 4265, 4264, {"-128", "-112", "-111", "127"}},
    {2, 4263, 4262, {"-180", "-150", "-149", "180"}},
    {2, 4265, 4264, {"-100%", "-80%", "-79%", "100%"}},
    {4, 4263, 4262, {"2", "18", "19", "128"}},
    {7, 4263, 4262, {"0", "16", "17", "255"}},
    {8, 4210, 4209, {"2", "6", "7", "32"}},
    {18, 4324, 4321, {"2", "6", "7", "32"}},
    {18, 4325, 4322, {"1", "11", "12", "100"}},
    {18, 4326, 4323, {"0", "16", "17", "255"}},
    {22, 4280, 4279, {"1", "17", "18", "254"}},
    {32, 4263, 4262, {"0", "16", "17", "254"}},
    {40, 4293, 4292, {"1", "3", "4", "15"}},
    {50, 4293, 4292, {"1", "11", "12", "100"}},
    {53, 4210, 4209, {"2", "7", "8", "32"}},
    {54, 4210, 4209, {"1", "3", "4", "10"}},
    {65, 4294, 4295, {"0", "10", "11", "100"}},
    {65, 4297, 4296, {"0", "10", "11", "100"}},
};

TEST_F(DialogFrame, ShowsTheStepsAndEndsOfEveryBar) {
    constexpr int kCodes[] = {SB_TOP, SB_PAGEDOWN, SB_LINEDOWN, SB_BOTTOM};
    for (const BarCase& bar : kBars) {
        CallerBuffer buffer;
        RunEffectDialog(bar.effect, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
            for (std::size_t i = 0; i < std::size(kCodes); ++i) {
                Scroll(dialog, bar.bar, kCodes[i]);
                EXPECT_EQ(TextOf(dialog, bar.label), bar.shown[i])
                    << "effect " << bar.effect << ", bar " << bar.bar << ", code " << kCodes[i];
            }
        });
    }
}

// Every scroll code on a bar: it moves within its range, the label follows, and the After pane is
// told exactly when something was to be done.
void ExpectScrollCodes(HWND dialog, const ScrollBarRow& bar) {
    struct Step {
        int code;
        int thumb;
        std::optional<int> target; // nothing happens without
    };
    const bool hasEnds = bar.trait != BarTrait::WithoutEnds;
    const auto end = [&](int place) { return hasEnds ? std::optional(place) : std::nullopt; };
    const int middle = (bar.minimum + bar.maximum) / 2;
    const Step steps[] = {
        {SB_LINEUP, 0, bar.start - bar.line},
        {SB_THUMBTRACK, -5, -5},
        {SB_THUMBTRACK, bar.minimum, bar.minimum},
        {SB_LINEUP, 0, bar.minimum - bar.line},
        {SB_PAGEUP, 0, bar.minimum - bar.page},
        {SB_LINEDOWN, 0, bar.minimum + bar.line},
        {SB_TOP, 0, end(bar.minimum)},
        {SB_THUMBPOSITION, bar.maximum, bar.maximum},
        {SB_PAGEDOWN, 0, bar.maximum + bar.page},
        {SB_LINEDOWN, 0, bar.maximum + bar.line},
        {SB_PAGEUP, 0, bar.maximum - bar.page},
        {SB_BOTTOM, 0, end(bar.maximum)},
        {SB_THUMBTRACK, middle, middle},
        {SB_ENDSCROLL, bar.maximum, std::nullopt},
        {9, bar.maximum, std::nullopt},
        {SB_THUMBTRACK, 30000, 30000},
        {SB_THUMBTRACK, -30000, -30000},
    };
    TakeAnnouncement(dialog);
    int position = bar.start;
    for (const Step& step : steps) {
        SCOPED_TRACE(testing::Message() << "code " << step.code << ", thumb " << step.thumb);
        Scroll(dialog, bar.bar, step.code, step.thumb);
        position = std::clamp(step.target.value_or(position), bar.minimum, bar.maximum);
        EXPECT_EQ(ScrollBarPosition(dialog, bar.bar), position);
        EXPECT_EQ(TextOf(dialog, bar.label), std::to_string(position - bar.zero) +
                                                 (bar.trait == BarTrait::Percent ? "%" : ""));
        EXPECT_EQ(TakeAnnouncement(dialog), step.target.has_value());
    }
}

TEST_F(DialogFrame, FollowsEveryScrollCodeWithinTheRange) {
    std::set<const ScrollBarRow*> seen;
    for (const EffectRow& row : EffectCatalogue()) {
        for (const ScrollBarRow& bar : ScrollBarsOf(row.dialog, row.id)) {
            if (!seen.insert(&bar).second) {
                continue;
            }
            SCOPED_TRACE(testing::Message() << row.title << ", bar " << bar.bar);
            CallerBuffer buffer;
            RunEffectDialog(row.id, colour_.Handle(), buffer.words.data(),
                            [&](HWND dialog) { ExpectScrollCodes(dialog, bar); });
        }
    }
}

LayerEntry EntryOf(const PreviewControl& pane) {
    const BlockLock lock(pane.previewDocument);
    return reinterpret_cast<const ImageDocument*>(lock.Bytes())->layers[0];
}

std::vector<u8> LayerOf(const PreviewControl& pane) {
    return BytesOf(EntryOf(pane).image);
}

// What an effect makes of the picture in a pane.
std::vector<u8> Applied(const PreviewControl& pane, EffectId effect, std::vector<i32> record) {
    LayerEntry entry = EntryOf(pane);
    const OwnedBlock image = MakeBlock(BytesOf(entry.image));
    const OwnedBlock mask = MakeBlock(BytesOf(entry.mask));
    entry.image = image.Handle();
    entry.mask = mask.Handle();
    ApplyEffectToLayer(&entry, effect, record.data(), 1, entry.maskBypass == 1 ? 1 : 0);
    const OwnedBlock newImage(entry.image == image.Handle() ? 0 : entry.image);
    const OwnedBlock newMask(entry.mask == mask.Handle() ? 0 : entry.mask);
    return BytesOf(entry.image);
}

// The After pane shows what the engine gives for the record, at the next tick and not before.
TEST_F(DialogFrame, BringsTheNewAfterPictureAtTheNextTick) {
    CallerBuffer buffer;
    RunEffectDialog(1, colour_.Handle(), buffer.words.data(), [&](HWND dialog) {
        const HWND after = GetDlgItem(dialog, kAfterPaneId);
        const PreviewControl& pane = *PreviewControlOf(after);
        SendMessageA(after, WM_TIMER, kPreviewTimer, 0);
        const std::vector<u8> untouched = LayerOf(pane);
        const std::vector<u8> brighter = Applied(pane, 1, {0, 127, 0});
        Scroll(dialog, 4263, SB_BOTTOM);
        EXPECT_EQ(LayerOf(pane), untouched);
        SendMessageA(after, WM_TIMER, kPreviewTimer, 0);
        EXPECT_NE(LayerOf(pane), untouched);
        EXPECT_EQ(LayerOf(pane), brighter);
    });
}

// Lengths in pixels shrink with the view; the record itself stays as the controls set it.
TEST_F(DialogFrame, RunsThePreviewOnARecordScaledByTheZoom) {
    const struct {
        EffectId effect;
        i32 zoomPercent;
        std::vector<i32> scaled;
    } cases[] = {
        {2, 50, {0, 0}},        {8, 50, {2}},     {17, 33, {2}},    {18, 50, {2, 100, 0}},
        {20, 50, {2, 1}},       {32, 50, {1, 0}}, {40, 50, {1}},    {51, 50, {3, 0, 0}},
        {52, 100, {5, 5}},      {52, 50, {2, 2}}, {53, 50, {4, 5}}, {53, 20, {4, 2}},
        {54, 50, {5, 3, 1, 0}},
    };
    const TestDocument document(400, 300);
    for (const auto& row : cases) {
        SCOPED_TRACE(testing::Message()
                     << "effect " << row.effect << " at " << row.zoomPercent << "%");
        CallerBuffer buffer;
        RunEffectDialog(row.effect, document.Handle(), buffer.words.data(), [&](HWND dialog) {
            const HWND after = GetDlgItem(dialog, kAfterPaneId);
            PreviewControl& pane = *PreviewControlOf(after);
            const void* address = pane.params;
            const std::vector<i32> record = AnnouncedRecord(dialog, row.scaled.size());
            SetZoomPercent(pane, row.zoomPercent);
            ASSERT_EQ(pane.zoomPercent, row.zoomPercent);
            ASSERT_TRUE(RebuildPreviewDocument(pane));
            const std::vector<u8> expected = Applied(pane, row.effect, row.scaled);
            SendMessageA(after, WM_TIMER, kPreviewTimer, 0);
            EXPECT_EQ(pane.params, address);
            EXPECT_EQ(AnnouncedRecord(dialog, row.scaled.size()), record);

            EXPECT_EQ(LayerOf(pane), expected);
        });
    }
}

TEST_F(DialogFrame, OpensAndClosesOnDocumentsThatCannotBeShown) {
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
                                          const HWND after = GetDlgItem(dialog, kAfterPaneId);
                                          SendMessageA(after, WM_TIMER, kPreviewTimer, 0);
                                          PressOk(dialog);
                                      }),
                      1);
        }
    }
}

} // namespace

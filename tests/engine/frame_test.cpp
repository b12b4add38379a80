// What holds for every effect: which calls are refused, the services, the cursor.
#include "engine/engine.h"
#include "platform/base/input.h"
#include "tests/support/dib_maker.h"
#include "tests/support/engine_probe.h"
#include "tests/support/leak_guard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>

namespace {

constexpr i32 kLowest = std::numeric_limits<i32>::min();
constexpr i32 kHighest = std::numeric_limits<i32>::max();

constexpr EffectId kWithoutRecord[] = {5, 6, 16, 23, 24, 55, 66};
constexpr EffectId kNegative = 6;
constexpr EffectId kEqualize = 5;

bool IsEffect(EffectId id) {
    return id >= 1 && id <= 70 && !(id >= 10 && id <= 15) && !(id >= 26 && id <= 31) &&
           !(id >= 42 && id <= 47) && !(id >= 58 && id <= 63) && id != 69;
}

bool HasRecord(EffectId id) {
    return std::ranges::find(kWithoutRecord, id) == std::end(kWithoutRecord);
}

using Record = std::array<i32, 80>;

// A record that every effect takes.
Record PlainRecord() {
    Record record;
    record.fill(1);
    record[0] = record[1] = 2;
    return record;
}

// No picture, no question, no report, no cursor.
void ExpectRefused(DibHandle source, EffectId id, const void* params) {
    EngineProbe probe;
    const OwnedBlock result(RunEffect(source, id, params));
    EXPECT_FALSE(result) << "effect " << id;
    EXPECT_TRUE(probe.Trace().empty()) << "effect " << id;
}

class RunEffectTest : public LeakGuardTest {};

TEST_F(RunEffectTest, TakesAPlainRecordForEveryEffect) {
    const OwnedBlock grey = MakeDib(ImageClass::Grey, 9, 7);
    for (EffectId id = -1; id <= 72; ++id) {
        const Record record = PlainRecord();
        EXPECT_EQ(static_cast<bool>(OwnedBlock(RunEffect(grey.Handle(), id, record.data()))),
                  IsEffect(id))
            << "effect " << id;
    }
}

TEST_F(RunEffectTest, RefusesUnknownEffectsAndNullsWithoutTouchingAnything) {
    const OwnedBlock grey = MakeDib(ImageClass::Grey, 9, 7);
    const Record record = PlainRecord();
    for (const EffectId id : {kLowest, -1, 0, 10, 15, 26, 31, 42, 47, 58, 63, 69, 71, kHighest}) {
        ExpectRefused(grey.Handle(), id, record.data());
    }
    for (EffectId id = 1; id <= 70; ++id) {
        ExpectRefused(0, id, record.data());
        ExpectRefused(0xFFFFFFFF, id, record.data());
        if (HasRecord(id)) {
            ExpectRefused(grey.Handle(), id, nullptr);
        }
    }
}

TEST_F(RunEffectTest, RefusesPicturesThatClaimMoreThanTheirBlockHolds) {
    struct Lie {
        const char* name;
        void (*tell)(DibHeader& header);
        bool isOfPalette = false;
    };
    const Lie lies[] = {
        {"no header length", [](DibHeader& header) { header.biSize = 0; }},
        {"a shorter header", [](DibHeader& header) { header.biSize = 39; }},
        {"a longer header", [](DibHeader& header) { header.biSize = 124; }},
        {"no width", [](DibHeader& header) { header.biWidth = 0; }},
        {"a negative width", [](DibHeader& header) { header.biWidth = -9; }},
        {"the lowest width", [](DibHeader& header) { header.biWidth = kLowest; }},
        {"a longer row", [](DibHeader& header) { header.biWidth += 64; }},
        {"the longest row", [](DibHeader& header) { header.biWidth = kHighest; }},
        {"no height", [](DibHeader& header) { header.biHeight = 0; }},
        {"top-down rows", [](DibHeader& header) { header.biHeight = -7; }},
        {"a row more", [](DibHeader& header) { ++header.biHeight; }},
        {"the most rows", [](DibHeader& header) { header.biHeight = kHighest; }},
        {"the most of all", [](DibHeader& header) { header.biWidth = header.biHeight = kHighest; }},
        {"16 bits", [](DibHeader& header) { header.biBitCount = 16; }},
        {"32 bits", [](DibHeader& header) { header.biBitCount = 32; }},
        {"an entry more", [](DibHeader& header) { ++header.biClrUsed; }, true},
        {"the most entries", [](DibHeader& header) { header.biClrUsed = ~0u; }, true},
    };
    const Record record = PlainRecord();
    for (const ImageClass kind : {ImageClass::Colour, ImageClass::Grey, ImageClass::Palette8,
                                  ImageClass::Palette4, ImageClass::Mono}) {
        for (const Lie& lie : lies) {
            if (kind == ImageClass::Colour && lie.isOfPalette) {
                continue; // without a palette, whatever the field says
            }
            SCOPED_TRACE(lie.name);
            const OwnedBlock picture = MakeDib(kind, 9, 7);
            EditHeader(picture.Handle(), lie.tell);
            for (EffectId id = 1; id <= 70; ++id) {
                ExpectRefused(picture.Handle(), id, record.data());
            }
        }
    }
}

TEST_F(RunEffectTest, RefusesBlocksThatEndEarly) {
    const Record record = PlainRecord();
    for (const ImageClass kind : {ImageClass::Colour, ImageClass::Grey, ImageClass::Palette4}) {
        const std::vector<u8> bytes = BytesOf(MakeDib(kind, 9, 7).Handle());
        for (const std::size_t size : {std::size_t{1}, std::size_t{39}, std::size_t{40},
                                       std::size_t{41}, bytes.size() - 1}) {
            const OwnedBlock cut = MakeBlock({bytes.data(), bytes.data() + size});
            for (EffectId id = 1; id <= 70; ++id) {
                ExpectRefused(cut.Handle(), id, record.data());
            }
        }
    }
}

TEST_F(RunEffectTest, SurvivesRecordsOfAnyWords) {
    const i32 words[] = {kLowest, kLowest + 1, -300, -1, 0, 1, 2, 3, 300, kHighest - 1, kHighest};
    std::mt19937 random(1);
    for (const ImageClass kind : {ImageClass::Colour, ImageClass::Grey}) {
        const OwnedBlock picture = MakeDib(kind, 9, 7);
        const UnchangedGuard unchanged(picture.Handle());
        for (i32 i = 0; i < 70 * 100; ++i) {
            Record record = PlainRecord();
            record[random() % 4] = words[random() % std::size(words)];
            record[random() % 8] = words[random() % std::size(words)];
            const OwnedBlock result(RunEffect(picture.Handle(), i % 70 + 1, record.data()));
        }
    }
}

TEST(EngineRandomTest, StartsAfreshOnEveryThread) {
    for (i32 thread = 0; thread < 2; ++thread) {
        OnFreshThread([] {
            EXPECT_EQ(EngineRandom(), 41);
            EXPECT_EQ(EngineRandom(), 18467);
        });
    }
}

TEST(ServicesTest, TheEnableFlagsKeepTheHooksQuiet) {
    EngineProbe probe;
    progressEnabled = 0;
    abortEnabled = 0;
    probe.StopAtQuestion(1);
    ReportProgress(5);
    EXPECT_EQ(ShouldAbort(), 0);
    EXPECT_TRUE(probe.Trace().empty());
    progressEnabled = -1;
    abortEnabled = -1;
    ReportProgress(5);
    EXPECT_NE(ShouldAbort(), 0);
    EXPECT_EQ(probe.Trace(), (std::vector<i32>{5, EngineProbe::kQuestion}));
    progressEnabled = 1;
    abortEnabled = 1;
}

TEST_F(RunEffectTest, ShowsTheArrowAfterAStopAndWhenMemoryIsShort) {
    const std::vector<i32> busyThenArrow = {EngineProbe::kBusyCursor, EngineProbe::kArrowCursor};
    const OwnedBlock picture = MakeDib(ImageClass::Palette8, 9, 7);
    EngineProbe probe;
    probe.StopAtQuestion(4);
    EXPECT_EQ(RunEffect(picture.Handle(), kEqualize, nullptr), 0u);
    EXPECT_EQ(probe.Cursors(), busyThenArrow);
    probe.StopAtQuestion(0);
    const std::size_t allocations = FailEachAllocation(
        [&] {
            probe.Clear();
            FreeBlock(RunEffect(picture.Handle(), kEqualize, nullptr));
        },
        [&](bool failed) {
            EXPECT_EQ(probe.Cursors(), busyThenArrow);
            EXPECT_EQ(probe.Reports().empty(), failed);
        });
    EXPECT_GE(allocations, 1u);
}

// A keyboard of one key, which answers once with `pendingKey`.
SHORT pendingKey;
int askedKey;

SHORT TakePendingKey(int virtualKey) {
    askedKey = virtualKey;
    return std::exchange(pendingKey, SHORT{0});
}

constexpr InputProvider kKeyboard = {[](HINSTANCE, LPCSTR) { return HCURSOR{}; },
                                     [](HCURSOR) { return HCURSOR{}; }, [] { return HCURSOR{}; },
                                     TakePendingKey};

// The key goes down when the kernel reports for the first time.
SHORT keyDuringRun;
void ZQ_CALL PressKey(i32 percent) {
    pendingKey = percent == 0 ? keyDuringRun : SHORT{0};
}

TEST_F(RunEffectTest, StopsForEscapeHeldOrNotButNotForAPressFromBefore) {
    const OwnedBlock picture = MakeDib(ImageClass::Colour, 9, 7);
    const InputProvider* const before = SetInputProvider(&kKeyboard);
    progressHook = PressKey;
    struct Press {
        SHORT earlier;
        SHORT during;
        bool stops;
    };
    const SHORT held = std::numeric_limits<SHORT>::min();
    const Press presses[] = {{0, 0, false}, {1, 0, false},   {held, 0, false},
                             {0, 1, true},  {0, held, true}, {1, 1, true}};
    for (const Press& press : presses) {
        pendingKey = press.earlier;
        keyDuringRun = press.during;
        const OwnedBlock result(RunEffect(picture.Handle(), kNegative, nullptr));
        EXPECT_EQ(!result, press.stops) << press.earlier << ' ' << press.during;
        EXPECT_EQ(askedKey, VK_ESCAPE);
    }
    progressHook = nullptr;
    SetInputProvider(before);
}

} // namespace

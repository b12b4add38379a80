#include "editors/histogram.h"

#include "tests/support/leak_guard.h"

#include <algorithm>

namespace {

class HistogramTest : public LeakGuardTest {};

std::vector<u32> ListOf(const CountTable& counts) {
    return counts ? std::vector<u32>(counts.Entries(), counts.Entries() + kTones)
                  : std::vector<u32>();
}

// All channels' counts, pixel by pixel.
std::array<std::vector<u32>, kChannels> CountPlainly(DibHandle picture, bool isGrey) {
    const DibCopy dib(picture);
    std::array<std::vector<u32>, kChannels> counts;
    for (std::size_t channel = 0; channel < (isGrey ? 1 : kChannels); ++channel) {
        counts[channel].resize(kTones);
    }
    const u32 bits = dib.View().bits;
    for (i32 y = 0; bits != 1 && (!isGrey || bits == 8) && y < dib.View().height; ++y) {
        for (i32 x = 0; x < dib.View().width; ++x) {
            Bgr colour{};
            if (bits == 24) {
                colour = dib.ColourAt(x, y);
            } else if (dib.At(x, y) < dib.View().paletteEntries) {
                colour = dib.PaletteAt(dib.At(x, y));
            }
            if (isGrey) {
                ++counts[0][colour[0]];
                continue;
            }
            for (std::size_t channel = 1; channel < kChannels; ++channel) {
                ++counts[channel][colour[3 - channel]];
                ++counts[0][colour[3 - channel]];
            }
        }
    }
    return counts;
}

TEST_F(HistogramTest, CountsEveryPixelOfEveryDepthOnceInEachChannel) {
    for (const ImageClass kind : {ImageClass::Colour, ImageClass::Grey, ImageClass::Palette8,
                                  ImageClass::Palette4, ImageClass::Mono}) {
        for (const auto& [width, height] : {std::pair(1, 1), {2, 3}, {7, 5}, {64, 33}, {301, 40}}) {
            for (const u32 entries : {kFullPalette, 0u, 11u}) {
                const OwnedBlock picture =
                    MakeDib(kind, width, height,
                            {.seed = 7, .paletteEntries = entries, .randomPadding = true});
                const UnchangedGuard unchanged(picture.Handle());
                for (const bool isGrey : {false, true}) {
                    SCOPED_TRACE(testing::Message()
                                 << "kind " << static_cast<int>(kind) << ", " << width << " x "
                                 << height << ", " << entries << " entries, grey " << isGrey);
                    const Histogram histogram = CountTones(picture.Handle(), isGrey);
                    const auto expected = CountPlainly(picture.Handle(), isGrey);
                    for (std::size_t channel = 0; channel < kChannels; ++channel) {
                        EXPECT_EQ(ListOf(histogram.channels[channel]), expected[channel])
                            << "channel " << channel;
                    }
                }
            }
        }
    }
}

TEST_F(HistogramTest, StaysZeroForABlockThatHoldsNoWholePicture) {
    const OwnedBlock cut = MakeDib(ImageClass::Colour, 16, 16);
    EditHeader(cut.Handle(), [](DibHeader& header) { header.biHeight = 17; });
    const OwnedBlock tiny(AllocateBlock(12));
    for (const DibHandle picture : {cut.Handle(), tiny.Handle(), DibHandle{0}, 0x7FFF0001u}) {
        EXPECT_EQ(ListOf(CountTones(picture, false).channels[3]), std::vector<u32>(kTones));
    }
}

TEST_F(HistogramTest, IsAbsentWhenMemoryIsShort) {
    const OwnedBlock picture = MakeDib(ImageClass::Colour, 4, 4);
    Histogram histogram;
    const auto run = [&] { histogram = CountTones(picture.Handle(), false); };
    const std::size_t allocations = FailEachAllocation(run, [&](bool failed) {
        for (const CountTable& counts : histogram.channels) {
            EXPECT_EQ(!counts, failed);
        }
        histogram = {};
    });
    EXPECT_EQ(allocations, kChannels);
}

// The y of a bar from the rule's own numbers, worked out by hand.
TEST_F(HistogramTest, GivesBarsThatFollowTheSpreadOfTheTones) {
    struct {
        std::vector<u32> counts; // of the first tones; the last one repeats up to `tones`
        std::size_t tones;
        i32 height;
        int first; // the bar of tone 0
        int rest;  // of a tone that does not occur; -1: there is none
    } const cases[] = {
        {{0}, 1, 130, 131, 131},
        {{1000}, 1, 130, 4, 131},   // 131 - 129
        {{500}, 2, 130, 4, 131},    // 131 - trunc(500 * 130 * 2 / 1001)
        {{100}, 256, 130, 80, -1},  // 131 - trunc(100 * 130 * 101 / 25601)
        {{100}, 128, 130, 80, 131}, // 131 - trunc(100 * 130 * 51 / 12801)
        {{10}, 256, 130, 131, -1},  // rare tones do not spread: trunc(10 * 130 * 1 / 2561)
        {{11}, 256, 130, 80, -1},
        {{30, 970}, 2, 130, 124, 131}, // 131 - trunc(30 * 130 * 2 / 1001)
        {{7}, 1, 0, 4, 4},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(testing::Message() << test.counts[0] << " in " << test.tones << " tones");
        const CountTable counts(kTones);
        for (std::size_t tone = 0; tone < test.tones; ++tone) {
            counts[tone] = test.counts[std::min(tone, test.counts.size() - 1)];
        }
        const BarTable bars = MakeBars(counts, test.height);
        ASSERT_TRUE(bars);
        EXPECT_EQ(bars[0], test.first);
        if (test.rest >= 0) {
            EXPECT_EQ(bars[255], test.rest);
        }
    }
    EXPECT_FALSE(MakeBars(CountTable(), 130));
}

} // namespace

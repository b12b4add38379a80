// Records that no dialog makes: every word at the ends of its range, beyond them and at the ends of
// 32 bits.
#include "engine/dib_format.h"
#include "tests/support/engine_probe.h"
#include "tests/support/leak_guard.h"
#include "tools/effect_table.h"
#include <zq/engine.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <random>

namespace {

constexpr std::size_t kWorkBytes = std::size_t{40} << 20; // of one run on a small picture
constexpr i32 kShortRandomRecords = 200;
constexpr i32 kLongRandomRecords = 5000;

constexpr ImageClass kClasses[] = {ImageClass::Colour, ImageClass::Grey, ImageClass::Palette8,
                                   ImageClass::Palette4, ImageClass::Mono};

using Record = std::array<i32, 80>; // room for the longest

// The values that a word is tried at. A word of a table of bytes is one of these, too.
std::vector<i64> ValuesOfWord(const EffectDescription& effect, std::size_t word) {
    std::vector<i64> values = {INT32_MIN, -1, 0, 1, INT32_MAX};
    for (const EffectParameter& parameter : effect.parameters) {
        if (parameter.kind == ParameterKind::File || parameter.kind == ParameterKind::Bytes ||
            word < parameter.offset / 4 || word >= parameter.offset / 4 + parameter.count) {
            continue;
        }
        i64 smallest = parameter.smallest;
        i64 largest = parameter.largest;
        for (const ParameterChoice& choice : parameter.choices) {
            smallest = std::min<i64>(smallest, choice.value);
            largest = std::max<i64>(largest, choice.value);
        }
        values.insert(values.end(), {smallest - 1, smallest, largest, largest + 1});
    }
    return values;
}

class HardRecords : public LeakGuardTest {
protected:
    // 0 or a picture like the source, with no more questions and memory than any record may need.
    void Run(const EffectDescription& effect, const Record& words) {
        const auto* first = words.data();
        const std::vector<i32> record(first, first + effect.recordBytes / sizeof(i32));
        for (const OwnedBlock& source : sources_) {
            const LeakGuard guard;
            const DibCopy before(source.Handle());
            probe_.Clear();
            FailAllocation(0); // counts from here
            const OwnedBlock result(RunEffect(source.Handle(), effect.id, record.data()));
            const DibView& from = before.View();
            EXPECT_LE(probe_.Questions(),
                      static_cast<std::size_t>(4 * (from.width + from.height) + 4));
            EXPECT_LE(AllocatedBytes(), kWorkBytes);
            EXPECT_TRUE(BytesOf(source.Handle()) == before.Bytes()) << "the source was written to";
            if (result) {
                const DibCopy after(result.Handle());
                ASSERT_TRUE(after.Valid());
                EXPECT_EQ(after.View().imageClass, from.imageClass);
                EXPECT_EQ(after.View().width, from.width);
                EXPECT_EQ(after.View().height, from.height);
                EXPECT_EQ(after.Bytes().size(), before.Bytes().size());
            }
            if (HasFailure()) {
                FAIL() << effect.name << " on image class " << static_cast<i32>(from.imageClass)
                       << ", record " << testing::PrintToString(record);
            }
        }
    }

    HardRecords() {
        for (const ImageClass imageClass : kClasses) {
            for (const auto& [width, height] : {std::pair(1, 1), {7, 5}, {40, 3}}) {
                sources_.push_back(MakeDib(imageClass, width, height));
            }
        }
    }

private:
    std::vector<OwnedBlock> sources_;
    EngineProbe probe_;
};

TEST_F(HardRecords, GiveNothingOrAPictureAndCostNoMoreThanOthers) {
    std::mt19937 random(5);
    const i32 randomRecords =
        std::getenv("ZQ_LONG") != nullptr ? kLongRandomRecords : kShortRandomRecords;
    for (const EffectDescription& effect : EffectTable()) {
        if (effect.defaults == nullptr) {
            continue;
        }
        const std::size_t words = effect.recordBytes / sizeof(i32);
        Record usual{};
        std::memcpy(usual.data(), effect.defaults, effect.recordBytes);
        std::vector<std::vector<i64>> values;
        for (std::size_t word = 0; word < words; ++word) {
            values.push_back(ValuesOfWord(effect, word));
            for (const i64 value : values[word]) {
                Record record = usual;
                record[word] = static_cast<i32>(value);
                Run(effect, record);
            }
        }
        for (const i32 value : {INT32_MIN, -1, 0, 1, INT32_MAX}) {
            Record same;
            same.fill(value);
            Run(effect, same);
        }
        for (i32 i = 0; i < randomRecords; ++i) {
            Record record = usual;
            for (std::size_t word = 0; word < words; ++word) {
                if (random() % 2 == 0) {
                    record[word] = static_cast<i32>(values[word][random() % values[word].size()]);
                }
            }
            Run(effect, record);
        }
    }
}

TEST_F(HardRecords, WithASquareOrWeightOfGigabytesGiveNothing) {
    constexpr i32 kFirst = 1 << 22;
    const OwnedBlock source = MakeDib(ImageClass::Grey, 7, 5);
    const auto takes = [&](CentreWeightedParams params) {
        return static_cast<bool>(OwnedBlock(RunEffect(source.Handle(), 9, &params)));
    };
    EXPECT_TRUE(takes({kFirst - 1, 0}) && takes({2, kFirst - 3}));
    EXPECT_FALSE(takes({kFirst, 0}) || takes({0, kFirst - 2}) || takes({INT32_MAX, INT32_MAX}));
}

} // namespace

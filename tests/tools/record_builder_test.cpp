#include "tools/record_builder.h"

#include "tests/support/dib_maker.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using Words = std::vector<u32>;

Words WordsOf(const Record& record) {
    Words words(record.size() / 4);
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::memcpy(&words[i], record.data() + i * 4, 4);
    }
    return words;
}

struct BuildCase {
    EffectId id;
    std::vector<std::string> assignments;
    Words words; // of the record; none where the assignments are refused
    const char* error = "";
};

TEST(BuildRecord, PutsNamedValuesIntoTheDefaults) {
    const BuildCase cases[] = {
        {1, {}, {0, 30, 20}},
        {1, {"brightness=-128", "channel=green"}, {2, 0xFFFFFF80, 20}},
        {1, {"channel=3", "CONTRAST=0x7f"}, {3, 30, 127}},
        {2, {"hue=-60"}, {0xFFFFFFC4, static_cast<u32>(-30)}},
        {6, {}, {}},
        {9, {"centre-weight=7"}, {5, 7}},
        {20, {"takemaximum=no"}, {3, 0}},
        {51, {"size=Small", "height=low"}, {2, 2, 0}},
        {54, {"direction=bottom_left", "backColor=#123456"}, {6, 3, 2, 0x563412}},
        {54, {"backColor=4294967295"}, {5, 3, 2, 0xFFFFFFFF}},
        {70, {"gain=-2147483648"}, {0x80000000}},
    };
    for (const BuildCase& test : cases) {
        Record record;
        std::string error;
        EXPECT_TRUE(BuildRecord(*FindEffect(test.id), test.assignments, record, error)) << error;
        EXPECT_EQ(WordsOf(record), test.words) << "effect " << test.id;
    }
}

TEST(BuildRecord, SaysWhatIsWrong) {
    const BuildCase cases[] = {
        {4, {"levels=129"}, {}, "levels=129: it must be a whole number from 2 to 128"},
        {4, {"levels="}, {}, "levels=: it must be"},
        {4, {"levels=8.5"}, {}, "levels=8.5: it must be"},
        {4, {"levels=99999999999999999999999"}, {}, "it must be"},
        {4, {"levels=8", "LEVELS=9"}, {}, "levels is given twice"},
        {4, {"colours=8"}, {}, "no parameter 'colours'; it has channel and levels"},
        {6, {"size=3"}, {}, "negative takes no parameters"},
        {25, {"scale=0"}, {}, "other than 0"},
        {25, {"cells=1,2,3"}, {}, "there are 3 numbers, not 25"},
        {25, {"filter="}, {}, "not a readable filter file"},
        {52, {"width=0"}, {}, "1 or more"},
        {54, {"direction=up"}, {}, "bottom or bottom-right"},
        {54, {"direction=9"}, {}, "bottom or bottom-right"},
        {54, {"backColor=#12345"}, {}, "a colour such as"},
        {54, {"backColor=#-12345"}, {}, "a colour such as"},
        {56, {"curve=/dev/null"}, {}, "not a readable curve file"},
        {56, {"curve=1,2"}, {}, "there are 2 numbers, not 256"},
    };
    for (const BuildCase& test : cases) {
        Record record;
        std::string error;
        EXPECT_FALSE(BuildRecord(*FindEffect(test.id), test.assignments, record, error));
        EXPECT_NE(error.find(test.error), error.npos) << error;
    }
}

TEST(BuildRecord, TakesListsOfNumbers) {
    std::string curve;
    std::string cells;
    for (u32 i = 0; i < 256; ++i) {
        curve += std::to_string(255 - i) + (i < 255 ? "," : "");
        cells += i < 25 ? std::to_string(static_cast<i32>(i) - 12) + (i < 24 ? "," : "") : "";
    }
    Record record;
    std::string error;
    ASSERT_TRUE(BuildRecord(*FindEffect(56), {"curve=" + curve, "mapping=radial"}, record, error))
        << error;
    EXPECT_EQ(WordsOf(record)[0], 2u);
    EXPECT_EQ(record[4], 255);
    EXPECT_EQ(record[259], 0);
    ASSERT_TRUE(BuildRecord(*FindEffect(25), {"cells=" + cells}, record, error)) << error;
    EXPECT_EQ(WordsOf(record)[3], static_cast<u32>(-12));
    EXPECT_EQ(WordsOf(record)[27], 12u);
}

TEST(ParseRecord, TakesExactlyTheBytesOfTheRecord) {
    struct {
        EffectId id;
        const char* digits;
        bool taken;
        Words words;
    } const cases[] = {
        {4, "0100000008000000", true, {1, 8}},
        {4, "01000000 ffFFffFF", true, {1, 0xFFFFFFFF}},
        {6, "", true, {}},
        {4, "010000000800000", false, {}},
        {4, "01000000080000", false, {}},
        {4, "010000000800000000", false, {}},
        {4, "01000000080000-1", false, {}},
        {6, "00000000", false, {}},
    };
    for (const auto& test : cases) {
        Record record;
        std::string error;
        EXPECT_EQ(ParseRecord(*FindEffect(test.id), test.digits, record, error), test.taken)
            << test.digits << error;
        EXPECT_EQ(error.empty(), test.taken);
        if (test.taken) {
            EXPECT_EQ(WordsOf(record), test.words);
        }
    }
}

} // namespace

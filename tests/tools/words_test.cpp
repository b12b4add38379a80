#include "tools/command_line.h"
#include "tools/words.h"

#include <gtest/gtest.h>

namespace {

TEST(ParseNumber, TakesWholeNumbersAndNothingElse) {
    struct {
        const char* text;
        std::optional<i64> value;
    } const cases[] = {
        {"0", 0},
        {"-128", -128},
        {"+7", 7},
        {"0x1F", 31},
        {"4294967295", 4294967295},
        {"99999999999999999999", INT64_MAX},
        {"-99999999999999999999", INT64_MIN},
        {"", {}},
        {"-", {}},
        {"+", {}},
        {"0x", {}},
        {"1x", {}},
        {" 1", {}},
        {"1.5", {}},
        {"+-1", {}},
        {"0x-1", {}},
        {"--1", {}},
        {"99999999999999999999x", {}},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(ParseNumber(test.text), test.value) << test.text;
    }
}

TEST(FindEffectByWord, ForgivesCaseAndHyphensAndSuggestsWhatIsNear) {
    struct {
        const char* word;
        EffectId id; // 0: none
        const char* error;
    } const cases[] = {
        {"17", 17, ""},
        {"gaussian-blur", 17, ""},
        {"Gaussian Blur", 17, ""},
        {"GAUSSIAN_BLUR", 17, ""},
        {"User's Filter", 25, ""},
        {"gausian-blur", 0, "did you mean gaussian-blur?"},
        {"mosiac", 0, "did you mean mosaic?"},
        {"blur", 0, "did you mean centre-weighted-blur, gaussian-blur or motion-blur?"},
        {"xylophonist", 0, "'zqfx list' shows all"},
        {"", 0, "'zqfx list' shows all"},
        {"10", 0, "there is no effect '10'"},
        {"017", 0, "there is no effect '017'"},
    };
    for (const auto& test : cases) {
        std::string error;
        const EffectDescription* effect = FindEffectByWord(test.word, error);
        EXPECT_EQ(effect != nullptr ? effect->id : 0, test.id) << test.word;
        EXPECT_NE(error.find(test.error), error.npos) << error;
    }
}

} // namespace

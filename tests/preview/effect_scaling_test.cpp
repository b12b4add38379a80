#include "preview/effect_scaling.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

using Words = std::vector<i32>;

TEST(ScaledRecord, ScalesWhatCountsPixelsAndOnlyWhileItLives) {
    struct Case {
        EffectId id;
        i32 zoom;
        Words record, scaled;
    };
    std::vector<Case> cases = {
        {8, 50, {3}, {2}}, // 1 is less than the effect takes
        {17, 33, {32}, {10}},
        {18, 50, {20, 100, 255}, {10, 100, 255}},
        {20, 50, {9, 1}, {4, 1}},
        {21, 1, {32}, {2}},
        {35, 33, {50}, {16}},
        {36, 100, {100}, {100}},
        {37, 50, {50, 0x00FFFFFF}, {25, 0x00FFFFFF}},
        {39, 1, {1}, {1}},
        {40, 20, {15}, {3}},
        {52, 50, {32, 5}, {16, 2}},
        {53, 33, {8, 32}, {8, 10}},
        {54, 50, {5, 3, 10, 99}, {5, 3, 5, 99}},
        {8, 100, {INT32_MAX}, {32}},
        {8, 100, {INT32_MIN}, {2}},
    };
    std::set<EffectId> scalable;
    for (const Case& each : cases) {
        scalable.insert(each.id);
    }
    for (EffectId id = 1; id <= 70; ++id) {
        if (!scalable.contains(id)) {
            cases.push_back({id, 33, Words(65, 30), Words(65, 30)});
        }
    }
    for (const auto& [id, zoom, record, scaled] : cases) {
        Words words = record;
        {
            const ScaledRecord guard(words.data(), id, zoom);
            EXPECT_EQ(words, scaled) << "effect " << id << " at " << zoom;
        }
        EXPECT_EQ(words, record) << "effect " << id;
    }
}

} // namespace

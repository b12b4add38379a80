// Every effect by the road it takes: without memory, and on two threads at once.
#include "image/crop_scale.h"
#include "image/masked_effect.h"
#include "tests/support/leak_guard.h"
#include "tools/effect_table.h"

#include <algorithm>
#include <atomic>
#include <ranges>
#include <thread>

namespace {

using Pictures = std::vector<std::vector<u8>>;

// Every effect on a layer of its own, by the road it takes, and each result at another size. Random
// effects draw from this thread's stream.
Pictures RunAll(const std::vector<const EffectDescription*>& effects) {
    Pictures pictures;
    for (const EffectDescription* effect : effects) {
        for (const ImageClass kind : {ImageClass::Colour, ImageClass::Grey}) {
            LayerEntry layer{};
            OwnedBlock image = MakeDib(kind, 61, 40);
            OwnedBlock mask = MakeDib(ImageClass::Grey, 61, 40);
            layer.image = image.HandOver();
            layer.mask = mask.HandOver();
            ApplyEffectToLayer(&layer, effect->id, effect->defaults, 0, 0);
            image = OwnedBlock(layer.image);
            mask = OwnedBlock(layer.mask);
            const OwnedBlock scaled(CropAndScaleDib(image.Handle(), 3, 2, 50, 30, 20, 33));
            for (const OwnedBlock& made : {std::cref(image), std::cref(mask), std::cref(scaled)}) {
                pictures.push_back(BytesOf(made.Handle()));
            }
        }
    }
    return pictures;
}

class EveryEffect : public LeakGuardTest {};

// Wrinkle alone goes on without a table: its picture is black then.
constexpr EffectId kWrinkle = 37;

TEST_F(EveryEffect, LeavesTheLayerAsItWasWhenAnAllocationFails) {
    for (const EffectDescription& effect : EffectTable()) {
        SCOPED_TRACE(effect.name);
        const bool colour = (effect.takes & ClassBit(ImageClass::Colour)) != 0;
        const OwnedBlock image = MakeDib(colour ? ImageClass::Colour : ImageClass::Grey, 9, 7);
        const OwnedBlock mask = MakeDib(ImageClass::Grey, 9, 7);
        const UnchangedGuard sameImage(image.Handle());
        const UnchangedGuard sameMask(mask.Handle());
        LayerEntry layer{};
        i32 changesWithoutMemory = 0;
        const auto apply = [&] {
            layer.image = image.Handle();
            layer.mask = mask.Handle();
            ApplyEffectToLayer(&layer, effect.id, effect.defaults, 1, 0);
        };
        FailEachAllocation(apply, [&](bool failed) {
            const bool changed = layer.image != image.Handle();
            EXPECT_TRUE(changed || failed);
            changesWithoutMemory += changed && failed ? 1 : 0;
            FreeBlock(changed ? layer.image : 0);
            FreeBlock(layer.mask != mask.Handle() ? layer.mask : 0);
        });
        EXPECT_EQ(changesWithoutMemory, effect.id == kWrinkle ? 1 : 0);
    }
}

TEST_F(EveryEffect, GivesTwoThreadsThePicturesThatEachGetsAlone) {
    std::vector<const EffectDescription*> orders[2];
    for (const EffectDescription& effect : EffectTable()) {
        orders[0].push_back(&effect);
    }
    orders[1].assign(orders[0].rbegin(), orders[0].rend());
    Pictures alone[2], together[2];
    for (const std::size_t i : {0u, 1u}) {
        std::thread([&] { alone[i] = RunAll(orders[i]); }).join();
    }
    for (int round = 0; round < 3; ++round) {
        // No std::latch: in the library of the Windows compiler it may sleep for ever.
        std::atomic<int> missing = 2;
        const auto run = [&](std::size_t i) {
            for (--missing; missing != 0;) {
                std::this_thread::yield();
            }
            together[i] = RunAll(orders[i]);
        };
        std::thread first(run, 0);
        std::thread second(run, 1);
        first.join();
        second.join();
        for (const std::size_t i : {0u, 1u}) {
            EXPECT_TRUE(together[i] == alone[i]) << "thread " << i << ", round " << round;
        }
    }
}

} // namespace

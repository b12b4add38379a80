// The engine's dispatcher is replaced here by a stand-in, so that the roads are tested alone.
#include "image/masked_effect.h"

#include "tests/support/leak_guard.h"

#include <zq/engine.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr u8 kEffectMask = 3;

struct Call {
    DibHandle source;
    EffectId id;
    const void* params;
};

std::vector<Call> calls;
std::size_t failingCall; // counted from 1; 0 for none

std::vector<u8> AfterEffect(std::vector<u8> bytes) {
    std::size_t first = bytes[14] == 24 ? 40 : 1064;
    for (; first < bytes.size(); ++first) {
        bytes[first] ^= kEffectMask;
    }
    return bytes;
}

class MaskedEffect : public LeakGuardTest {
protected:
    void SetUp() override {
        calls.clear();
        failingCall = 0;
        image_ = MakeDib(ImageClass::Colour, 5, 4, {.seed = 1});
        mask_ = MakeDib(ImageClass::Grey, 5, 4, {.seed = 2});
        entry_ = {};
        entry_.image = image_.Handle();
        entry_.mask = mask_.Handle();
    }

    u8 Apply(EffectId id, u8 keepOriginal, u8 ignoreMask) {
        return ApplyEffectToLayer(&entry_, id, &params_, keepOriginal, ignoreMask);
    }

    bool IsUnchanged() const {
        return entry_.image == image_.Handle() && entry_.mask == mask_.Handle();
    }

    OwnedBlock image_;
    OwnedBlock mask_;
    LayerEntry entry_;
    int params_ = 0;
};

TEST_F(MaskedEffect, TakesTheRoadOfItsNumber) {
    const std::vector<EffectId> masked = {9, 17, 18, 19, 52, 53, 56, 57, 64, 65, 66};
    for (EffectId id = 0; id <= 71; ++id) {
        SCOPED_TRACE(id);
        calls.clear();
        entry_.image = image_.Handle();
        entry_.mask = mask_.Handle();
        EXPECT_EQ(Apply(id, 1, 0), 1);
        const bool takesMask = std::find(masked.begin(), masked.end(), id) != masked.end();
        EXPECT_EQ(calls.size(), takesMask ? 2u : 1u);
        EXPECT_EQ(entry_.mask != mask_.Handle(), takesMask);
        EXPECT_EQ(calls[0].source == image_.Handle(), !takesMask);
        for (const Call& call : calls) {
            EXPECT_EQ(call.id, id);
            EXPECT_EQ(call.params, &params_);
        }
        const OwnedBlock newImage(entry_.image);
        const OwnedBlock newMask(takesMask ? entry_.mask : 0);
    }
}

TEST_F(MaskedEffect, RunsOnTheMultipliedImageAndOnTheMaskAndDividesBack) {
    const UnchangedGuard sameImage(image_.Handle());
    const UnchangedGuard sameMask(mask_.Handle());
    EXPECT_EQ(Apply(17, 1, 0), 1);
    const OwnedBlock newImage(entry_.image);
    const OwnedBlock newMask(entry_.mask);
    const OwnedBlock expected(PremultiplyByMask(image_.Handle(), mask_.Handle()));
    const OwnedBlock worked = MakeBlock(AfterEffect(BytesOf(expected.Handle())));
    EXPECT_EQ(BytesOf(newMask.Handle()), AfterEffect(BytesOf(mask_.Handle())));
    EXPECT_EQ(DivideByMask(worked.Handle(), newMask.Handle()), 1);
    EXPECT_EQ(BytesOf(newImage.Handle()), BytesOf(worked.Handle()));
}

TEST_F(MaskedEffect, FreesWhatItReplacesUnlessTheCallerKeepsIt) {
    const struct {
        EffectId id;
        u8 ignoreMask;
        bool replacesMask;
    } cases[] = {{1, 0, false}, {1, 1, false}, {17, 1, false}, {17, 0, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "effect " << c.id << ", ignoring " << +c.ignoreMask);
        SetUp();
        EXPECT_EQ(Apply(c.id, 0, c.ignoreMask), 1);
        EXPECT_EQ(GlobalFlags(ZqBlockOfHandle(image_.HandOver())), GMEM_INVALID_HANDLE);
        EXPECT_EQ(entry_.mask != mask_.Handle(), c.replacesMask);
        EXPECT_EQ(BlockSize(mask_.Handle()) == 0, c.replacesMask);
        const OwnedBlock newImage(entry_.image);
        const OwnedBlock newMask(c.replacesMask ? entry_.mask : 0);
        EXPECT_TRUE(DibCopy(newImage.Handle()).Valid());
    }
}

TEST_F(MaskedEffect, LeavesTheLayerAsItWasWhenAnythingIsMissing) {
    EXPECT_EQ(ApplyEffectToLayer(nullptr, 1, &params_, 0, 0), 0);
    EXPECT_EQ(ApplyEffectToLayer(nullptr, 17, &params_, 0, 0), 0);
    const OwnedBlock wide = MakeDib(ImageClass::Grey, 6, 4);
    const OwnedBlock colour = MakeDib(ImageClass::Colour, 5, 4);
    const OwnedBlock fourBits = MakeDib(ImageClass::Palette4, 5, 4);
    const u32 good = image_.Handle();
    const struct {
        DibHandle image, mask;
        EffectId id;
        u8 answer;
    } cases[] = {{0, mask_.Handle(), 1, 0},
                 {0, mask_.Handle(), 17, 1},
                 {good, 0, 17, 1},
                 {good, wide.Handle(), 17, 1},
                 {good, colour.Handle(), 17, 1},
                 {fourBits.Handle(), mask_.Handle(), 17, 1}};
    for (const auto& c : cases) {
        const LeakGuard guard;
        entry_.image = c.image;
        entry_.mask = c.mask;
        EXPECT_EQ(Apply(c.id, 0, 0), c.answer);
        EXPECT_EQ(entry_.image, c.image);
        EXPECT_EQ(entry_.mask, c.mask);
    }
    EXPECT_TRUE(calls.empty());
}

TEST_F(MaskedEffect, LeavesTheLayerAsItWasWhenTheEffectOrMemoryFails) {
    for (const std::size_t n : {1u, 2u}) {
        const LeakGuard guard;
        calls.clear();
        failingCall = n;
        EXPECT_EQ(Apply(17, 0, 0), 1);
        EXPECT_TRUE(IsUnchanged());
    }
    failingCall = 1;
    calls.clear();
    EXPECT_EQ(Apply(1, 0, 0), 0);
    EXPECT_TRUE(IsUnchanged());

    failingCall = 0;
    const UnchangedGuard sameImage(image_.Handle());
    const UnchangedGuard sameMask(mask_.Handle());
    const std::size_t allocations = FailEachAllocation([&] { EXPECT_EQ(Apply(17, 1, 0), 1); },
                                                       [&](bool failed) {
                                                           EXPECT_EQ(IsUnchanged(), failed);
                                                           if (!failed) {
                                                               FreeBlock(entry_.image);
                                                               FreeBlock(entry_.mask);
                                                           }
                                                       });
    EXPECT_EQ(allocations, 3u);
}

// 256 x 256 pixels: column c has colour c, row m has mask m.
struct AllPairs {
    AllPairs() {
        std::vector<u8> colours;
        std::vector<u8> masks;
        for (u32 i = 0; i < 65536; ++i) {
            colours.push_back(static_cast<u8>(i));
            masks.push_back(static_cast<u8>(i >> 8));
        }
        image = MakeGreyDib(256, colours);
        mask = MakeGreyDib(256, masks);
    }
    OwnedBlock image;
    OwnedBlock mask;
};

TEST_F(MaskedEffect, MultipliesAndDividesExactly) {
    const AllPairs all;
    const OwnedBlock multiplied(PremultiplyByMask(all.image.Handle(), all.mask.Handle()));
    const DibCopy product(multiplied.Handle());
    EXPECT_EQ(DivideByMask(all.image.Handle(), all.mask.Handle()), 1);
    const DibCopy quotient(all.image.Handle());
    for (i32 m = 0; m < 256; ++m) {
        for (i32 c = 0; c < 256; ++c) {
            ASSERT_EQ(product.At(c, m), static_cast<u32>(c * m / 255)) << c << " x " << m;
            const i32 expected = m == 0 ? c : c * 255 / m % 256;
            ASSERT_EQ(quotient.At(c, m), static_cast<u32>(expected)) << c << " / " << m;
        }
    }
}

TEST_F(MaskedEffect, CountsAPaletteAlsoAt24Bits) {
    std::vector<u8> bytes = BytesOf(image_.Handle());
    bytes.insert(bytes.begin() + kDibHeaderBytes, 8, 200);
    bytes[32] = 2;
    const OwnedBlock withPalette = MakeBlock(bytes);
    const OwnedBlock result(PremultiplyByMask(withPalette.Handle(), mask_.Handle()));
    const OwnedBlock plainResult(PremultiplyByMask(image_.Handle(), mask_.Handle()));
    const std::vector<u8> plain = BytesOf(plainResult.Handle());
    const std::vector<u8> worked = BytesOf(result.Handle());
    EXPECT_TRUE(std::equal(plain.begin() + 40, plain.end(), worked.begin() + 48, worked.end()));
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.begin() + 48, worked.begin()));
}

TEST_F(MaskedEffect, BlocksThatDoNotFitAreRefusedUntouched) {
    const auto shortened = [](const OwnedBlock& dib) {
        std::vector<u8> bytes = BytesOf(dib.Handle());
        bytes.pop_back();
        return MakeBlock(bytes);
    };
    const OwnedBlock shortImage = shortened(image_);
    const OwnedBlock shortMask = shortened(mask_);
    const OwnedBlock tall = MakeDib(ImageClass::Grey, 5, 5);
    const OwnedBlock mono = MakeDib(ImageClass::Mono, 5, 4);
    const u32 image = image_.Handle();
    const u32 mask = mask_.Handle();
    const std::pair<u32, u32> cases[] = {{0, mask},
                                         {image, 0},
                                         {image, 0xABCDu},
                                         {shortImage.Handle(), mask},
                                         {image, shortMask.Handle()},
                                         {image, tall.Handle()},
                                         {image, image},
                                         {mono.Handle(), mask},
                                         {image, mono.Handle()}};
    for (const auto& [first, second] : cases) {
        const LeakGuard guard;
        const UnchangedGuard unchanged(first);
        EXPECT_EQ(PremultiplyByMask(first, second), 0u);
        EXPECT_EQ(DivideByMask(first, second), 0);
    }
}

} // namespace

DibHandle RunEffect(DibHandle source, EffectId id, const void* params) {
    calls.push_back({source, id, params});
    if (calls.size() == failingCall) {
        return 0;
    }
    const std::vector<u8> bytes = BytesOf(source);
    OwnedBlock result(AllocateBlock(bytes.size()));
    const BlockLock lock(result.Handle());
    if (!lock) {
        return 0;
    }
    std::memcpy(lock.Bytes(), AfterEffect(bytes).data(), bytes.size());
    return result.HandOver();
}

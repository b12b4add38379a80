#include "engine/relief/mean_slopes.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/relief/mean_slopes.cpp"
#define HWY_WANT_AVX3_DL
#include <hwy/foreach_target.h>

#include "engine/vector/pixel_planes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

struct alignas(64) SlopesOfGroup {
    i16 slopes[kPlanePixels];

    void Take(const u8* high, const u8* low, std::size_t count) {
        SplitPixels(high, count, high_);
        SplitPixels(low, count, low_);
        for (std::size_t i = 0; i < count; ++i) {
            const auto sum = static_cast<i16>(high_.blue[i] - low_.blue[i] + high_.green[i] -
                                              low_.green[i] + high_.red[i] - low_.red[i]);
            slopes[i] = static_cast<i16>(sum / 3);
        }
    }

    void AddTo(Plane& plane, std::size_t count) const {
        for (std::size_t i = 0; i < count; ++i) {
            const auto tone = static_cast<i16>(plane[i] + slopes[i]);
            plane[i] = static_cast<u8>(std::clamp<i16>(tone, 0, 255));
        }
    }

private:
    Planes high_;
    Planes low_;
};

void WriteMeanSlopes(const u8* high, const u8* low, u8* to, std::size_t pixels) {
    SlopesOfGroup group;
    alignas(64) Plane tones;
    ForPixelGroups(pixels, [&](std::size_t first, std::size_t count) {
        group.Take(high + 3 * first, low + 3 * first, count);
        std::memset(tones, 128, count);
        group.AddTo(tones, count);
        JoinPixels(tones, tones, tones, count, to + 3 * first);
    });
}

void AddMeanSlopes(const u8* high, const u8* low, const u8* ground, u8* to, std::size_t pixels) {
    SlopesOfGroup group;
    Planes planes;
    ForPixelGroups(pixels, [&](std::size_t first, std::size_t count) {
        group.Take(high + 3 * first, low + 3 * first, count);
        SplitPixels(ground + 3 * first, count, planes);
        group.AddTo(planes.blue, count);
        group.AddTo(planes.green, count);
        group.AddTo(planes.red, count);
        JoinPixels(planes.blue, planes.green, planes.red, count, to + 3 * first);
    });
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(WriteMeanSlopes);
HWY_EXPORT(AddMeanSlopes);

void WriteMeanSlopes(const u8* high, const u8* low, u8* to, std::size_t pixels) {
    HWY_DYNAMIC_DISPATCH(WriteMeanSlopes)(high, low, to, pixels);
}

void AddMeanSlopes(const u8* high, const u8* low, const u8* ground, u8* to, std::size_t pixels) {
    HWY_DYNAMIC_DISPATCH(AddMeanSlopes)(high, low, ground, to, pixels);
}

#endif

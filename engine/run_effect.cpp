// The dispatcher: one row per effect, with the kernel and the way its parameters reach it.
#include "engine/artistic/artistic_kernels.h"
#include "engine/colour/colour_kernels.h"
#include "engine/distortion/distortion_kernels.h"
#include "engine/engine.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/relief/relief_kernels.h"

#include <array>
#include <cstring>

namespace {

using EffectEntry = DibHandle (*)(DibHandle source, const void* params);

template <class Value>
Value ReadRecord(const void* params) {
    Value value;
    std::memcpy(&value, params, sizeof(value));
    return value;
}

template <class Params>
using RecordKernel = DibHandle (*)(DibHandle, const Params&);

// The kernel gets the record; a null one gives 0.
template <auto kernel>
constexpr EffectEntry FromRecord() {
    return []<class Params>(RecordKernel<Params>) -> EffectEntry {
        return [](DibHandle source, const void* params) -> DibHandle {
            return params == nullptr ? 0 : kernel(source, ReadRecord<Params>(params));
        };
    }(kernel);
}

// The kernel gets the record's first word; a null record gives 0.
template <DibHandle (*kernel)(DibHandle, i32)>
constexpr EffectEntry FromWord() {
    return [](DibHandle source, const void* params) -> DibHandle {
        return params == nullptr ? 0 : kernel(source, ReadRecord<i32>(params));
    };
}

// The kernel has no parameters, and the record is not looked at.
template <DibHandle (*kernel)(DibHandle)>
constexpr EffectEntry FromNothing() {
    return [](DibHandle source, const void*) -> DibHandle { return kernel(source); };
}

struct EffectRow {
    EffectId id;
    EffectEntry entry;
};

constexpr EffectRow kEffectTable[] = {
    {1, FromRecord<BrightnessContrast>()},
    {2, FromRecord<HueSaturation>()},
    {3, FromRecord<ToneTable>()},
    {4, FromRecord<ColorReduction>()},
    {5, FromNothing<Equalize>()},
    {6, FromNothing<Negative>()},
    {7, FromRecord<Threshold>()},
    {8, FromRecord<AverageBlur>()},
    {9, FromRecord<CentreWeightedBlur>()},
    {16, FromNothing<EdgeKeepingSmooth>()},
    {17, FromRecord<GaussianBlur>()},
    {18, FromRecord<UnsharpMask>()},
    {19, FromRecord<LineSharpen>()},
    {20, FromRecord<RankFilter>()},
    {21, FromRecord<MedianFilter>()},
    {22, FromRecord<FindContour>()},
    {23, FromNothing<ToneFold>()},
    {24, FromNothing<LogTone>()},
    {25, FromRecord<UserFilter>()},
    {32, FromRecord<Sketch>()},
    {33, FromWord<AutoEnhance>()},
    {34, FromWord<FilmGrain>()},
    {35, FromWord<Splash>()},
    {36, FromWord<Ripple>()},
    {37, FromRecord<Wrinkle>()},
    {38, FromWord<AddNoise>()},
    {39, FromWord<Melting>()},
    {40, FromWord<OilPainting>()},
    {41, FromWord<Fisheye>()},
    {48, FromWord<Cone>()},
    {49, FromWord<Whirlpool>()},
    {50, FromWord<Spiral>()},
    {51, FromRecord<Grid3D>()},
    {52, FromRecord<Mosaic>()},
    {53, FromRecord<MotionBlur>()},
    {54, FromRecord<Emboss>()},
    {55, FromNothing<ArcsineBulge>()},
    {56, FromRecord<MagicMirror>()},
    {57, FromRecord<AngularWarp>()},
    {64, FromRecord<RadialWarp>()},
    {65, FromRecord<RibbonWarp>()},
    {66, FromNothing<ArcsineStretch>()},
    {67, FromRecord<ToneAdjustment>()},
    {68, FromRecord<EdgeFade>()},
    {70, FromWord<WhitePointScale>()},
};

constexpr EffectId kLastEffect = 70;

constexpr auto kEntryById = [] {
    std::array<EffectEntry, kLastEffect + 1> entries{};
    for (const EffectRow& row : kEffectTable) {
        entries[static_cast<std::size_t>(row.id)] = row.entry;
    }
    return entries;
}();

} // namespace

DibHandle RunEffect(DibHandle source, EffectId id, const void* params) {
    if (source == 0 || id < 1 || id > kLastEffect) {
        return 0;
    }
    const EffectEntry entry = kEntryById[static_cast<std::size_t>(id)];
    return entry == nullptr ? 0 : entry(source, params);
}

// Dialogs with one or two bars and, all but Threshold, the channel group.
#include "dialogs/dialog_frame.h"
#include "dialogs/openers.h"
#include "dialogs/scroll_bars.h"
#include "resources/resource.h"
#include <zq/params.h>

namespace {

constexpr RadioGroup kChannels[] = {{IDC_CHANNEL_RGB, IDC_CHANNEL_B}};

// ---- Brightness and Contrast: works in a block of its own, which OK copies to the caller ----

struct BrightnessContrastContext {
    DocHandle document;
    BrightnessContrastParams record;
};

void* RebuildBrightnessContrast(HWND window, void* context) {
    constexpr int kNeutral = 128;
    BrightnessContrastParams& record = static_cast<BrightnessContrastContext*>(context)->record;
    record.channel = CheckedRadio(window, kChannels[0]);
    record.brightness = ScrollBarPosition(window, IDC_FIRST_BAR) - kNeutral;
    record.contrast = ScrollBarPosition(window, IDC_SECOND_BAR) - kNeutral;
    return &record;
}

INT_PTR AcceptBrightnessContrast(HWND, const void* context) {
    return static_cast<const BrightnessContrastContext*>(context)->record.channel + 1;
}

constexpr DialogKind kBrightnessContrast{
    .dialog = IDD_BRIGHTNESS_CONTRAST,
    .effect = 1,
    .greyRule = GreyRule::OneChannel,
    .radioGroups = kChannels,
    .rebuildRecord = RebuildBrightnessContrast,
    .acceptedResult = AcceptBrightnessContrast,
    .cancelledResult = -1,
};

// ---- Threshold: works in a block of its own, too ----

struct ThresholdContext {
    DocHandle document;
    ThresholdParams record;
};

void* RebuildThreshold(HWND window, void* context) {
    ThresholdParams& record = static_cast<ThresholdContext*>(context)->record;
    record.level = ScrollBarPosition(window, IDC_FIRST_BAR);
    return &record;
}

constexpr DialogKind kThreshold{
    .dialog = IDD_THRESHOLD,
    .effect = 7,
    .greyRule = GreyRule::None,
    .radioGroups = {},
    .rebuildRecord = RebuildThreshold,
    .acceptedResult = AcceptedWithOne,
    .cancelledResult = -1,
};

// ---- Color Reduction and Find Contour: work in the caller's buffer itself ----

template <class Params>
struct CallersBufferContext {
    DocHandle document;
    Params* record;
};

void* RebuildColorReduction(HWND window, void* context) {
    ColorReductionParams* record =
        static_cast<CallersBufferContext<ColorReductionParams>*>(context)->record;
    // On a grey document no channel is checked, and the caller's own stays.
    if (const int channel = CheckedRadio(window, kChannels[0]); channel >= 0) {
        record->channel = channel;
    }
    record->levels = ScrollBarPosition(window, IDC_FIRST_BAR);
    return record;
}

constexpr DialogKind kColorReduction{
    .dialog = IDD_COLOR_REDUCTION,
    .effect = 4,
    .greyRule = GreyRule::NoChannel,
    .radioGroups = kChannels,
    .rebuildRecord = RebuildColorReduction,
    .acceptedResult = AcceptedWithOne,
    .cancelledResult = 0,
};

void* RebuildFindContour(HWND window, void* context) {
    FindContourParams* record =
        static_cast<CallersBufferContext<FindContourParams>*>(context)->record;
    record->channel = CheckedRadio(window, kChannels[0]);
    record->threshold = ScrollBarPosition(window, IDC_CONTOUR_BAR);
    return record;
}

constexpr DialogKind kFindContour{
    .dialog = IDD_FIND_CONTOUR,
    .effect = 22,
    .greyRule = GreyRule::OneChannel,
    .radioGroups = kChannels,
    .rebuildRecord = RebuildFindContour,
    .acceptedResult = AcceptedWithOne,
    .cancelledResult = 0,
};

} // namespace

i32 OpenBrightnessContrast(EffectId, HWND parent, DocHandle document, void* params) {
    BrightnessContrastContext context{document, {}};
    if (RunDialog<kBrightnessContrast>(parent, &context) <= 0) {
        return 0;
    }
    *static_cast<BrightnessContrastParams*>(params) = context.record;
    return 1;
}

i32 OpenThreshold(EffectId, HWND parent, DocHandle document, void* params) {
    ThresholdContext context{document, {}};
    if (RunDialog<kThreshold>(parent, &context) <= 0) {
        return 0;
    }
    static_cast<ThresholdParams*>(params)->level = context.record.level;
    return 1;
}

i32 OpenColorReduction(EffectId, HWND parent, DocHandle document, void* params) {
    CallersBufferContext<ColorReductionParams> context{document,
                                                       static_cast<ColorReductionParams*>(params)};
    context.record->levels = 8;
    return static_cast<i32>(RunDialog<kColorReduction>(parent, &context));
}

i32 OpenFindContour(EffectId, HWND parent, DocHandle document, void* params) {
    CallersBufferContext<FindContourParams> context{document,
                                                    static_cast<FindContourParams*>(params)};
    context.record->mode = 1;
    context.record->threshold = 128;
    return static_cast<i32>(RunDialog<kFindContour>(parent, &context));
}

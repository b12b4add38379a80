// Dialogs with one or two bars and, all but Threshold, the channel group.
#include "dialogs/contexts.h"
#include "dialogs/dialog_frame.h"
#include "dialogs/openers.h"
#include "dialogs/scroll_bars.h"
#include "resources/resource.h"
#include <zq/params.h>

namespace {

constexpr RadioGroup kChannels[] = {{IDC_CHANNEL_RGB, IDC_CHANNEL_B}};

// ---- Brightness and Contrast: works in a block of its own, which OK copies to the caller ----

void* RebuildBrightnessContrast(HWND window, void* context) {
    BrightnessContrastParams& record =
        static_cast<OwnRecordContext<BrightnessContrastParams>*>(context)->record;
    record.channel = CheckedRadio(window, kChannels[0]);
    record.brightness = ScrollBarValue(window, IDD_BRIGHTNESS_CONTRAST, IDC_FIRST_BAR);
    record.contrast = ScrollBarValue(window, IDD_BRIGHTNESS_CONTRAST, IDC_SECOND_BAR);
    return &record;
}

INT_PTR AcceptBrightnessContrast(HWND, const void* context) {
    return static_cast<const OwnRecordContext<BrightnessContrastParams>*>(context)->record.channel +
           1;
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

void* RebuildThreshold(HWND window, void* context) {
    ThresholdParams& record = static_cast<OwnRecordContext<ThresholdParams>*>(context)->record;
    record.level = ScrollBarPosition(window, IDC_FIRST_BAR);
    return &record;
}

constexpr DialogKind kThreshold{
    .dialog = IDD_THRESHOLD,
    .effect = 7,
    .rebuildRecord = RebuildThreshold,
    .cancelledResult = -1,
};

// ---- Color Reduction and Find Contour: work in the caller's buffer itself ----

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
    .cancelledResult = 0,
};

} // namespace

i32 OpenBrightnessContrast(EffectId, HWND parent, DocHandle document, void* params) {
    return RunOnOwnRecord<kBrightnessContrast, BrightnessContrastParams>(parent, document, params);
}

i32 OpenThreshold(EffectId, HWND parent, DocHandle document, void* params) {
    return RunOnOwnRecord<kThreshold, ThresholdParams>(parent, document, params);
}

i32 OpenColorReduction(EffectId, HWND parent, DocHandle document, void* params) {
    auto* record = static_cast<ColorReductionParams*>(params);
    record->levels = ScrollBarStart(IDD_COLOR_REDUCTION, IDC_FIRST_BAR);
    return RunOnCallersBuffer<kColorReduction>(parent, document, record);
}

i32 OpenFindContour(EffectId, HWND parent, DocHandle document, void* params) {
    auto* record = static_cast<FindContourParams*>(params);
    record->mode = 1;
    record->threshold = ScrollBarStart(IDD_FIND_CONTOUR, IDC_CONTOUR_BAR);
    return RunOnCallersBuffer<kFindContour>(parent, document, record);
}

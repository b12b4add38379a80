// One dialog for the twelve effects that have a single strength. It ends with it.
#include "dialogs/dialog_frame.h"
#include "dialogs/openers.h"
#include "dialogs/scroll_bars.h"
#include "resources/resource.h"
#include <zq/params.h>

#include <algorithm>
#include <iterator>

namespace {

// The effect stands before the document here: see WirePreviews.
struct IntensityContext {
    EffectId effect;
    DocHandle document;
    // For the After pane: of Wrinkle, whose fill colour is black there. The other effects' records
    // are its first word.
    WrinkleParams record;
};

constexpr ServedEffect kIntensityEffects[] = {
    {33, IDS_AUTO_ENHANCE}, {34, IDS_FILM_GRAIN}, {35, IDS_SPLASH},    {36, IDS_RIPPLE},
    {37, IDS_WRINKLE},      {38, IDS_ADD_NOISE},  {39, IDS_MELTING},   {40, IDS_OIL_PAINTING},
    {41, IDS_FISHEYE},      {48, IDS_CONE},       {49, IDS_WHIRLPOOL}, {50, IDS_SPIRAL}};

ServedEffect IntensityEffectOf(const void* context) {
    const EffectId effect = static_cast<const IntensityContext*>(context)->effect;
    const auto* served = std::ranges::find(kIntensityEffects, effect, &ServedEffect::effect);
    return served == std::end(kIntensityEffects) ? ServedEffect{} : *served;
}

void* RebuildIntensity(HWND window, void* context) {
    WrinkleParams& record = static_cast<IntensityContext*>(context)->record;
    record.intensity = ScrollBarPosition(window, IDC_INTENSITY_BAR);
    return &record;
}

INT_PTR AcceptIntensity(HWND, const void* context) {
    return static_cast<const IntensityContext*>(context)->record.intensity;
}

constexpr DialogKind kIntensity{
    .dialog = IDD_INTENSITY,
    .servedEffect = IntensityEffectOf,
    .rebuildRecord = RebuildIntensity,
    .acceptedResult = AcceptIntensity,
    .cancelledResult = -1,
};

} // namespace

i32 OpenIntensity(EffectId effect, HWND parent, DocHandle document, void*) {
    IntensityContext context{effect, document, {}};
    // No intensity is 0; a dialog below a window that is gone ends so without having been shown.
    const INT_PTR intensity = RunDialog<kIntensity>(parent, &context);
    return intensity > 0 ? static_cast<i32>(intensity) : -1;
}

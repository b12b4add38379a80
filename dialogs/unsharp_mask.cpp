// Unsharp Mask: three bars.
#include "dialogs/contexts.h"
#include "dialogs/openers.h"
#include "dialogs/scroll_bars.h"
#include "resources/resource.h"
#include <zq/params.h>

namespace {

void* RebuildUnsharpMask(HWND window, void* context) {
    UnsharpMaskParams& record = static_cast<OwnRecordContext<UnsharpMaskParams>*>(context)->record;
    record.size = ScrollBarPosition(window, IDC_UNSHARP_SIZE_BAR);
    record.effect = ScrollBarPosition(window, IDC_UNSHARP_EFFECT_BAR);
    record.threshold = ScrollBarPosition(window, IDC_UNSHARP_THRESHOLD_BAR);
    return &record;
}

constexpr DialogKind kUnsharpMask{
    .dialog = IDD_UNSHARP_MASK,
    .effect = 18,
    .rebuildRecord = RebuildUnsharpMask,
    .cancelledResult = -1,
};

} // namespace

i32 OpenUnsharpMask(EffectId, HWND parent, DocHandle document, void* params) {
    return RunOnOwnRecord<kUnsharpMask, UnsharpMaskParams>(parent, document, params);
}

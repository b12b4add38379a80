// Hue and Saturation, Ribbon, and Mosaic, whose check box couples its two bars.
#include "dialogs/contexts.h"
#include "dialogs/openers.h"
#include "dialogs/scroll_bars.h"
#include "resources/resource.h"
#include <zq/params.h>

namespace {

// ---- Hue and Saturation ----

void* RebuildHueSaturation(HWND window, void* context) {
    HueSaturationParams* record =
        static_cast<CallersBufferContext<HueSaturationParams>*>(context)->record;
    record->hue = ScrollBarValue(window, IDD_HUE_SATURATION, IDC_FIRST_BAR);
    // The bar and its label say how much colour is added, the record how much is taken away.
    record->saturation = -ScrollBarValue(window, IDD_HUE_SATURATION, IDC_SECOND_BAR);
    return record;
}

constexpr DialogKind kHueSaturation{
    .dialog = IDD_HUE_SATURATION,
    .effect = 2,
    .rebuildRecord = RebuildHueSaturation,
    .cancelledResult = 0,
};

// ---- Ribbon ----

void* RebuildRibbon(HWND window, void* context) {
    RibbonParams& record = static_cast<OwnRecordContext<RibbonParams>*>(context)->record;
    record.frequency = ScrollBarPosition(window, IDC_FREQUENCY_BAR);
    record.amplitude = ScrollBarPosition(window, IDC_AMPLITUDE_BAR);
    return &record;
}

constexpr DialogKind kRibbon{
    .dialog = IDD_RIBBON,
    .effect = 65,
    .rebuildRecord = RebuildRibbon,
    .cancelledResult = -1,
};

// ---- Mosaic ----

struct MosaicContext {
    DocHandle document;
    MosaicParams* record;
    bool square; // both bars move together
};

void* RebuildMosaic(HWND window, void* context) {
    MosaicParams* record = static_cast<MosaicContext*>(context)->record;
    record->width = ScrollBarPosition(window, IDC_WIDTH_BAR);
    record->height = ScrollBarPosition(window, IDC_HEIGHT_BAR);
    return record;
}

bool OpenSquare(HWND window, void* context) {
    const bool square = static_cast<const MosaicContext*>(context)->square;
    SendDlgItemMessageA(window, IDC_SQUARE, BM_SETCHECK, square ? BST_CHECKED : BST_UNCHECKED, 0);
    return false;
}

// A thumb takes the other bar to its own place, the arrows and pages by its own way.
void MoveCoupledBar(HWND window, int bar, WPARAM wParam, int before, int moved) {
    const int other = bar == IDC_WIDTH_BAR ? IDC_HEIGHT_BAR : IDC_WIDTH_BAR;
    const int code = LOWORD(wParam);
    const bool byThumb = code == SB_THUMBPOSITION || code == SB_THUMBTRACK;
    MoveScrollBar(window, *FindScrollBar(IDD_MOSAIC, 0, other),
                  byThumb ? moved : ScrollBarPosition(window, other) + moved - before);
}

bool FollowMosaicBar(HWND window, void* context, WPARAM wParam, LPARAM lParam) {
    const int bar = GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
    const ScrollBarRow* row = FindScrollBar(IDD_MOSAIC, 0, bar);
    if (row == nullptr) {
        return false;
    }
    const int before = ScrollBarPosition(window, bar);
    const std::optional<int> moved = ScrolledPosition(*row, before, wParam);
    if (!moved) {
        return false;
    }
    MoveScrollBar(window, *row, *moved);
    if (static_cast<const MosaicContext*>(context)->square) {
        MoveCoupledBar(window, bar, wParam, before, *moved);
    }
    return true;
}

// Coupling brings the height to the width. The After pane catches up with the next moved bar.
bool ToggleSquare(HWND window, void* context, int id, UINT) {
    if (id == IDC_SQUARE) {
        MosaicContext& mosaic = *static_cast<MosaicContext*>(context);
        mosaic.square = !mosaic.square;
        OpenSquare(window, context);
        if (mosaic.square) {
            MoveScrollBar(window, *FindScrollBar(IDD_MOSAIC, 0, IDC_HEIGHT_BAR),
                          ScrollBarPosition(window, IDC_WIDTH_BAR));
            RebuildMosaic(window, context);
        }
    }
    return false;
}

constexpr DialogKind kMosaic{
    .dialog = IDD_MOSAIC,
    .effect = 52,
    .rebuildRecord = RebuildMosaic,
    .cancelledResult = 0,
    .openControls = OpenSquare,
    .followScrollBar = FollowMosaicBar,
    .command = ToggleSquare,
};

} // namespace

i32 OpenHueSaturation(EffectId, HWND parent, DocHandle document, void* params) {
    // The bars' neutral positions, until the dialog puts the values there.
    auto* record = static_cast<HueSaturationParams*>(params);
    record->hue = ScrollBarStart(IDD_HUE_SATURATION, IDC_FIRST_BAR);
    record->saturation = ScrollBarStart(IDD_HUE_SATURATION, IDC_SECOND_BAR);
    return RunOnCallersBuffer<kHueSaturation>(parent, document, record);
}

i32 OpenRibbon(EffectId, HWND parent, DocHandle document, void* params) {
    return RunOnOwnRecord<kRibbon, RibbonParams>(parent, document, params);
}

i32 OpenMosaic(EffectId, HWND parent, DocHandle document, void* params) {
    auto* record = static_cast<MosaicParams*>(params);
    record->width = ScrollBarStart(IDD_MOSAIC, IDC_WIDTH_BAR);
    record->height = ScrollBarStart(IDD_MOSAIC, IDC_HEIGHT_BAR);
    MosaicContext context{document, record, true};
    return static_cast<i32>(RunDialog<kMosaic>(parent, &context));
}

// 3D Grid, which has radio groups alone, and Sketch, which has one and a bar.
#include "dialogs/contexts.h"
#include "dialogs/openers.h"
#include "dialogs/scroll_bars.h"
#include "resources/resource.h"
#include <zq/params.h>

#include <algorithm>

namespace {

// ---- 3D Grid ----

constexpr RadioGroup kGridGroups[] = {
    {IDC_GRID_LARGE, IDC_GRID_SMALL},
    {IDC_GRID_HIGH, IDC_GRID_LOW},
    {IDC_GRID_REGULAR, IDC_GRID_IRREGULAR},
};

// By radio: Large, Medium, Small.
constexpr i32 kGridSizes[] = {3, 1, 2};

void* RebuildGrid3D(HWND window, void* context) {
    Grid3DParams& record = static_cast<OwnRecordContext<Grid3DParams>*>(context)->record;
    record.size = kGridSizes[std::max(CheckedRadio(window, kGridGroups[0]), 0)];
    record.height = CheckedRadio(window, kGridGroups[1]);
    record.shape = CheckedRadio(window, kGridGroups[2]);
    return &record;
}

constexpr DialogKind kGrid3D{
    .dialog = IDD_3D_GRID,
    .effect = 51,
    .radioGroups = kGridGroups,
    .rebuildRecord = RebuildGrid3D,
    .cancelledResult = -1,
};

// ---- Sketch ----

constexpr i32 kCrayon = 1;
constexpr i32 kPencil = 2;
constexpr RadioGroup kStyles[] = {{IDC_CRAYON, IDC_PENCIL}};

void* RebuildSketch(HWND window, void* context) {
    SketchParams& record = static_cast<OwnRecordContext<SketchParams>*>(context)->record;
    record.style = IsDlgButtonChecked(window, IDC_CRAYON) == BST_CHECKED ? kCrayon : kPencil;
    record.threshold = ScrollBarPosition(window, IDC_FIRST_BAR);
    return &record;
}

INT_PTR AcceptSketch(HWND, const void* context) {
    return static_cast<const OwnRecordContext<SketchParams>*>(context)->record.style;
}

constexpr DialogKind kSketch{
    .dialog = IDD_SKETCH,
    .effect = 32,
    .greyRule = GreyRule::PencilOnly,
    .radioGroups = kStyles,
    .rebuildRecord = RebuildSketch,
    .acceptedResult = AcceptSketch,
    .cancelledResult = -1,
};

} // namespace

i32 OpenGrid3D(EffectId, HWND parent, DocHandle document, void* params) {
    return RunOnOwnRecord<kGrid3D, Grid3DParams>(parent, document, params);
}

i32 OpenSketch(EffectId, HWND parent, DocHandle document, void* params) {
    return RunOnOwnRecord<kSketch, SketchParams>(parent, document, params);
}

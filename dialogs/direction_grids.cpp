// Emboss and Motion Blur: eight arrow buttons around an empty centre choose a direction.
#include "dialogs/contexts.h"
#include "dialogs/module_instance.h"
#include "dialogs/openers.h"
#include "dialogs/scroll_bars.h"
#include "resources/resource.h"
#include <zq/params.h>

namespace {

// ---- The grid ----

constexpr int kTileSize = 20; // width and height of an arrow's bitmap

// Buttons of a grid. They outlast the dialog, so that it opens with the last direction marked.
struct DirectionCells {
    int current;    // drawn inverted
    int remembered; // of the last OK
};

void DrawGridButton(const DRAWITEMSTRUCT& item, int currentCell) {
    if (item.CtlType != ODT_BUTTON || (item.itemAction & (ODA_DRAWENTIRE | ODA_FOCUS)) == 0) {
        return;
    }
    const RECT& place = item.rcItem;
    const int cell = static_cast<int>(item.CtlID);
    const HGDIOBJ bitmap = LoadBitmapA(
        moduleInstance, MAKEINTRESOURCEA(IDB_FIRST_DIRECTION + cell - IDC_FIRST_DIRECTION));
    const HDC memory = CreateCompatibleDC(item.hDC);
    const HGDIOBJ noBitmap = SelectObject(memory, bitmap);

    // The outline falls outside.
    const HGDIOBJ brush = SelectObject(item.hDC, GetStockObject(LTGRAY_BRUSH));
    Rectangle(item.hDC, -1, -1, place.right + 1, place.bottom + 1);
    SelectObject(item.hDC, brush);
    BitBlt(item.hDC, place.left, place.top, kTileSize, kTileSize, memory, 0, 0,
           cell == currentCell ? NOTSRCCOPY : SRCCOPY);

    SelectObject(memory, noBitmap);
    DeleteObject(bitmap);
    DeleteDC(memory);
}

template <DirectionCells& cells>
INT_PTR DrawGrid(HWND, void*, UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_DRAWITEM) {
        return FALSE;
    }
    DrawGridButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam), cells.current);
    return TRUE;
}

template <DirectionCells& cells>
bool OpenGrid(HWND window, void*) {
    cells.current = cells.remembered;
    SetFocus(GetDlgItem(window, cells.current));
    return true;
}

template <DirectionCells& cells, class Params>
bool ChooseDirection(HWND window, void* context, int id, UINT) {
    if (id < IDC_FIRST_DIRECTION || id > IDC_LAST_DIRECTION) {
        return false;
    }
    for (const int cell : {cells.current, id}) {
        InvalidateRect(GetDlgItem(window, cell), nullptr, FALSE);
    }
    cells.current = id;
    static_cast<CallersBufferContext<Params>*>(context)->record->direction =
        id - IDC_FIRST_DIRECTION + 1;
    return true;
}

template <DirectionCells& cells>
INT_PTR RememberCell(HWND, const void*) {
    cells.remembered = cells.current;
    return 1;
}

// A dialog with a grid: what its cells and its kind of record decide.
template <DirectionCells& cells, class Params>
constexpr DialogKind GridKind(DialogKind kind) {
    kind.acceptedResult = RememberCell<cells>;
    kind.openControls = OpenGrid<cells>;
    kind.command = ChooseDirection<cells, Params>;
    kind.otherMessage = DrawGrid<cells>;
    return kind;
}

// ---- Emboss ----

DirectionCells embossCells{IDC_LAST_DIRECTION, IDC_LAST_DIRECTION};

constexpr RadioGroup kModes[] = {
    {IDC_EMBOSS_ORIGINAL, IDC_EMBOSS_ACTIVE, IDC_EMBOSS_GRAY - IDC_EMBOSS_ORIGINAL}};

void* RebuildEmboss(HWND window, void* context) {
    EmbossParams* record = static_cast<CallersBufferContext<EmbossParams>*>(context)->record;
    record->mode = CheckedRadio(window, kModes[0]) + 1;
    record->depth = ScrollBarPosition(window, IDC_DISTANCE_BAR);
    return record;
}

constexpr DialogKind kEmboss = GridKind<embossCells, EmbossParams>({
    .dialog = IDD_EMBOSS,
    .effect = 54,
    .radioGroups = kModes,
    .rebuildRecord = RebuildEmboss,
    .cancelledResult = 0,
});

// ---- Motion Blur ----

constexpr int kRightCell = IDC_FIRST_DIRECTION + 4;
DirectionCells motionBlurCells{kRightCell, kRightCell};

void* RebuildMotionBlur(HWND window, void* context) {
    MotionBlurParams* record =
        static_cast<CallersBufferContext<MotionBlurParams>*>(context)->record;
    record->speed = ScrollBarPosition(window, IDC_DISTANCE_BAR);
    return record;
}

constexpr DialogKind kMotionBlur = GridKind<motionBlurCells, MotionBlurParams>({
    .dialog = IDD_MOTION_BLUR,
    .effect = 53,
    .rebuildRecord = RebuildMotionBlur,
    .cancelledResult = 0,
});

} // namespace

// Both start with a direction of their own, whichever cell is marked, until one is chosen.

i32 OpenEmboss(EffectId, HWND parent, DocHandle document, void* params) {
    auto* record = static_cast<EmbossParams*>(params);
    *record = {.direction = 5,
               .mode = kModes[0].start + 1,
               .depth = ScrollBarStart(IDD_EMBOSS, IDC_DISTANCE_BAR),
               .backColor = 0};
    return RunOnCallersBuffer<kEmboss>(parent, document, record);
}

i32 OpenMotionBlur(EffectId, HWND parent, DocHandle document, void* params) {
    auto* record = static_cast<MotionBlurParams*>(params);
    *record = {.direction = 4, .speed = ScrollBarStart(IDD_MOTION_BLUR, IDC_DISTANCE_BAR)};
    return RunOnCallersBuffer<kMotionBlur>(parent, document, record);
}

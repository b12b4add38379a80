// Magic Mirror: a curve, drawn by hand or by presets, bends the picture's coordinates.
#include "dialogs/dialog_frame.h"
#include "dialogs/module_instance.h"
#include "editors/curve_file.h"
#include "editors/curve_window.h"
#include "editors/openers.h"
#include "editors/param_file_dialog.h"
#include "resources/resource.h"
#include <zq/params.h>

#include <algorithm>

namespace {

constexpr RadioGroup kMappings = {IDC_MAPPING_HORIZONTAL, IDC_MAPPING_ANGULAR};
constexpr i32 kNoMapping = 4; // of no kernel; what a record holds when no radio is checked

constexpr UINT kFirstPresetName = IDS_CURVE_CIRCLE;
constexpr UINT kLastPresetName = IDS_CURVE_SMOOTH;

constexpr ParamFileKind kCurveFiles = {"Magic Curve (*.mmc)\0*.mmc\0", ".MMC", true};

struct MagicMirrorContext {
    DocHandle document;
    MagicMirrorParams* record;
    EditedCurve edited;
};

// The place in the list that was chosen at the last OK.
LRESULT rememberedPreset = 0;

MagicMirrorContext& ContextIn(void* context) {
    return *static_cast<MagicMirrorContext*>(context);
}

void RepaintCurve(HWND window) {
    InvalidateRect(GetDlgItem(window, IDC_CURVE), nullptr, TRUE);
}

// ---- Mapping ----

i32 CheckedMapping(HWND window) {
    const int checked = CheckedRadio(window, kMappings);
    return checked < 0 ? kNoMapping : checked;
}

// Brings the record and the name of the horizontal axis in line with the radios.
void TakeMapping(HWND window, MagicMirrorParams& record) {
    constexpr const char* kAxes[] = {"x", "y", "r", "r", "r"};
    record.mapping = CheckedMapping(window);
    SetDlgItemTextA(window, IDC_CURVE_AXIS, kAxes[record.mapping]);
}

bool ClickMapping(HWND window, MagicMirrorParams& record) {
    if (CheckedMapping(window) == record.mapping) {
        return false;
    }
    TakeMapping(window, record);
    return true;
}

// ---- Presets and files ----

bool Operate(HWND window, Curve& curve) {
    const LRESULT preset = SendDlgItemMessageA(window, IDC_CURVE_PRESET, CB_GETCURSEL, 0, 0);
    if (preset < 0) {
        return false;
    }
    ApplyPreset(curve, static_cast<CurvePreset>(preset));
    RepaintCurve(window);
    return true;
}

bool Load(HWND window, MagicMirrorContext& mirror) {
    char title[256] = "";
    LoadStringA(moduleInstance, IDS_LOAD_CURVE, title, sizeof(title));
    const char* path = AskForParamFile(window, kCurveFiles, title);
    MagicMirrorParams loaded;
    std::ranges::copy(mirror.edited.curve, loaded.curve);
    if (path != nullptr && ReadCurveFile(path, loaded)) {
        CheckRadioButton(window, kMappings.first, kMappings.last, kMappings.first + loaded.mapping);
        std::ranges::copy(loaded.curve, mirror.edited.curve.begin());
    }
    RepaintCurve(window);
    TakeMapping(window, *mirror.record);
    return true;
}

void Save(HWND window, const Curve& curve) {
    const char* path = AskForNewParamFile(window, kCurveFiles, "Save Magic Curve");
    if (path != nullptr) {
        MagicMirrorParams saved = {CheckedMapping(window), {}};
        std::ranges::copy(curve, saved.curve);
        WriteCurveFile(path, saved);
    }
}

// ---- The dialog ----

bool OpenControls(HWND window, void* context) {
    MagicMirrorContext& mirror = ContextIn(context);
    SetWindowLongPtrA(GetDlgItem(window, IDC_CURVE), GWLP_USERDATA,
                      reinterpret_cast<LONG_PTR>(&mirror.edited));
    CheckRadioButton(window, kMappings.first, kMappings.last, kMappings.first);
    TakeMapping(window, *mirror.record);
    for (UINT name = kFirstPresetName; name <= kLastPresetName; ++name) {
        char text[256] = "";
        LoadStringA(moduleInstance, name, text, sizeof(text));
        SendDlgItemMessageA(window, IDC_CURVE_PRESET, CB_ADDSTRING, 0,
                            reinterpret_cast<LPARAM>(text));
    }
    SendDlgItemMessageA(window, IDC_CURVE_PRESET, CB_SETCURSEL,
                        static_cast<WPARAM>(rememberedPreset), 0);
    return false;
}

bool Command(HWND window, void* context, int id, UINT code) {
    MagicMirrorContext& mirror = ContextIn(context);
    switch (id) {
    case IDC_MAPPING_HORIZONTAL:
    case IDC_MAPPING_VERTICAL:
    case IDC_MAPPING_RADIAL:
    case IDC_MAPPING_ANGULAR:
        return ClickMapping(window, *mirror.record);
    case IDC_CURVE:
        return code == kCurveDrawn;
    case IDC_OPERATE:
        return Operate(window, mirror.edited.curve);
    case IDC_LOAD_CURVE:
        return Load(window, mirror);
    case IDC_SAVE_CURVE:
        Save(window, mirror.edited.curve);
        return false;
    default:
        return false;
    }
}

void* RebuildRecord(HWND, void* context) {
    MagicMirrorContext& mirror = ContextIn(context);
    std::ranges::copy(mirror.edited.curve, mirror.record->curve);
    return mirror.record;
}

INT_PTR Accept(HWND window, const void*) {
    rememberedPreset = SendDlgItemMessageA(window, IDC_CURVE_PRESET, CB_GETCURSEL, 0, 0);
    return 1;
}

constexpr DialogKind kMagicMirror{
    .dialog = IDD_MAGIC_MIRROR,
    .effect = 56,
    .rebuildRecord = RebuildRecord,
    .acceptedResult = Accept,
    .cancelledResult = 0,
    .openControls = OpenControls,
    .command = Command,
};

} // namespace

i32 OpenMagicMirror(EffectId, HWND parent, DocHandle document, void* params) {
    auto* record = static_cast<MagicMirrorParams*>(params);
    MagicMirrorContext context{document, record, {IdentityCurve(), std::span(record->curve)}};
    record->mapping = 0;
    RebuildRecord(nullptr, &context);
    RegisterCurveWindow(moduleInstance);
    const INT_PTR result = RunDialog<kMagicMirror>(parent, &context);
    UnregisterCurveWindow(moduleInstance);
    return static_cast<i32>(result);
}

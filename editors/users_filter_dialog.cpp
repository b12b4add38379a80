// User's Filter: 25 weights, a scale and a bias, typed in, mirrored while they are typed.
#include "dialogs/dialog_frame.h"
#include "editors/filter_file.h"
#include "editors/filter_mirroring.h"
#include "editors/openers.h"
#include "editors/param_file_dialog.h"
#include "resources/resource.h"
#include <zq/params.h>

#include <algorithm>

namespace {

constexpr RadioGroup kSymmetries = {IDC_SYMMETRY_NONE, IDC_SYMMETRY_FOUR_WAY};
constexpr int kCentre = kFilterCells / 2;

constexpr ParamFileKind kFilterFiles = {"User Defined Filter (*.udf)\0*.udf\0", ".UDF", false};

struct UsersFilterContext {
    DocHandle document;
    UserFilterParams* record;
    UserFilterParams working; // what the After pane shows
};

// Set while a changed cell writes others: what these tell is not followed.
bool mirroring = false;

UsersFilterContext& ContextIn(void* context) {
    return *static_cast<UsersFilterContext*>(context);
}

UserFilterParams DefaultFilter() {
    UserFilterParams filter = {1, 0, 0, {}};
    filter.cells[kCentre] = 1;
    return filter;
}

// ---- Between the fields and a record ----

i32 CheckedSymmetry(HWND window) {
    const int checked = CheckedRadio(window, kSymmetries);
    return checked < 0 ? static_cast<i32>(FilterSymmetry::FourWay) : checked;
}

// Stores 0 for a text that is no number.
bool ReadField(HWND window, int id, i32& value) {
    BOOL isNumber = FALSE;
    value = static_cast<i32>(GetDlgItemInt(window, id, &isNumber, TRUE));
    return isNumber != 0;
}

void WriteField(HWND window, int id, i32 value) {
    SetDlgItemInt(window, id, static_cast<UINT>(value), TRUE);
}

// Stops at the first text that is no number and gives false then.
bool ReadFields(HWND window, UserFilterParams& filter) {
    int id = IDC_FIRST_CELL;
    for (i32& cell : filter.cells) {
        if (!ReadField(window, id++, cell)) {
            return false;
        }
    }
    if (!ReadField(window, IDC_FILTER_BIAS, filter.bias) ||
        !ReadField(window, IDC_FILTER_SCALE, filter.scale)) {
        return false;
    }
    filter.symmetry = CheckedSymmetry(window);
    return true;
}

void WriteFields(HWND window, const UserFilterParams& filter) {
    int id = IDC_FIRST_CELL;
    for (const i32 cell : filter.cells) {
        WriteField(window, id++, cell);
    }
    WriteField(window, IDC_FILTER_SCALE, filter.scale);
    WriteField(window, IDC_FILTER_BIAS, filter.bias);
}

// ---- Commands ----

// What a cell tells. Gives whether the After pane is to follow.
bool FollowCell(HWND window, int id, UINT code) {
    if (code == EN_ERRSPACE) {
        MessageBeep(0);
    }
    if (code != EN_CHANGE || mirroring) {
        return false;
    }
    mirroring = true;
    i32 value = 0;
    ReadField(window, id, value);
    const auto symmetry = static_cast<FilterSymmetry>(CheckedSymmetry(window));
    for (const int cell : MirroredCells(id - IDC_FIRST_CELL, symmetry)) {
        WriteField(window, IDC_FIRST_CELL + cell, value);
    }
    mirroring = false;
    return true;
}

void Reset(HWND window, UsersFilterContext& filter) {
    filter.working = DefaultFilter();
    *filter.record = DefaultFilter();
    WriteFields(window, *filter.record);
    CheckRadioButton(window, kSymmetries.first, kSymmetries.last, kSymmetries.first);
    ShowInAfterPane(window, filter.record);
}

// The fields tell of their changes themselves, so that what is loaded is mirrored, too.
void Load(HWND window) {
    const char* path = AskForParamFile(window, kFilterFiles, "Load User Defined Filter");
    const auto file = path == nullptr ? std::nullopt : ReadFilterFile(path);
    if (!file) {
        return;
    }
    const auto write = [window](int id, std::optional<i16> value) {
        if (value) {
            WriteField(window, id, *value);
        }
    };
    int id = IDC_FIRST_CELL;
    for (const auto& cell : file->cells) {
        write(id++, cell);
    }
    write(IDC_FILTER_SCALE, file->scale);
    write(IDC_FILTER_BIAS, file->bias);
    if (file->symmetry) {
        CheckRadioButton(window, kSymmetries.first, kSymmetries.last,
                         kSymmetries.first + *file->symmetry);
    }
}

void Save(HWND window) {
    const char* path = AskForNewParamFile(window, kFilterFiles, "Save User Defined Filter");
    if (path == nullptr) {
        return;
    }
    UserFilterParams filter{};
    int id = IDC_FIRST_CELL;
    for (i32& cell : filter.cells) {
        ReadField(window, id++, cell);
    }
    ReadField(window, IDC_FILTER_SCALE, filter.scale);
    ReadField(window, IDC_FILTER_BIAS, filter.bias);
    filter.symmetry = CheckedSymmetry(window);
    WriteFilterFile(path, filter);
}

bool Command(HWND window, void* context, int id, UINT code) {
    if (id >= IDC_FIRST_CELL && id < IDC_FIRST_CELL + kFilterCells) {
        return FollowCell(window, id, code);
    }
    switch (id) {
    case IDC_FILTER_SCALE:
    case IDC_FILTER_BIAS:
        return true;
    case IDC_RESET_FILTER:
        Reset(window, ContextIn(context));
        return false;
    case IDC_LOAD_FILTER:
        Load(window);
        return false;
    case IDC_SAVE_FILTER:
        Save(window);
        return false;
    default:
        return false;
    }
}

// ---- The dialog ----

bool OpenControls(HWND window, void* context) {
    UsersFilterContext& filter = ContextIn(context);
    filter.working = DefaultFilter();
    *filter.record = DefaultFilter();
    WriteFields(window, *filter.record);
    CheckRadioButton(window, kSymmetries.first, kSymmetries.last, kSymmetries.first);
    return false;
}

void* RebuildRecord(HWND window, void* context) {
    UserFilterParams& working = ContextIn(context).working;
    ReadFields(window, working);
    return &working;
}

// A field that is no number makes a Cancel of it.
INT_PTR Accept(HWND window, const void* context) {
    UserFilterParams* record = static_cast<const UsersFilterContext*>(context)->record;
    return ReadFields(window, *record) ? 1 : 0;
}

constexpr DialogKind kUsersFilter{
    .dialog = IDD_USERS_FILTER,
    .effect = 25,
    .rebuildRecord = RebuildRecord,
    .acceptedResult = Accept,
    .cancelledResult = 0,
    .openControls = OpenControls,
    .command = Command,
};

} // namespace

i32 OpenUsersFilter(EffectId, HWND parent, DocHandle document, void* params) {
    UsersFilterContext context{document, static_cast<UserFilterParams*>(params), {}};
    return static_cast<i32>(RunDialog<kUsersFilter>(parent, &context));
}

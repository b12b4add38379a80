#include "library/effect_browser.h"

#include "dialogs/embedding.h"
#include "dialogs/module_instance.h"
#include "dialogs/openers.h"
#include "library/effect_dialog.h"
#include "platform/embedded_dialog.h"
#include "resources/resource.h"
#include <zq/params.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <utility>

i32 snapshotValid = 0;

namespace {

constexpr UINT_PTR kFirstEffectTimer = 0;
constexpr UINT kFirstEffectMilliseconds = 100;
constexpr EffectId kFirstEffect = 1;
constexpr i32 kSnapshotBytes = 300;

enum class Rank { None, Minimum, Maximum };

struct BrowserRow {
    const char* text;
    EffectId effect;
    Rank rank = Rank::None; // which of the two that share an effect
};

constexpr BrowserRow kRows[] = {
    {"Brightness and Contrast", kFirstEffect},
    {"Hue and Saturation", 2},
    {"Color Reduction", 4},
    {"Threshold", 7},
    {"Average", 8},
    {"Guassian Blur", 17},
    {"Unsharp Mask", 18},
    {"Maximum", 20, Rank::Maximum},
    {"Median", 21},
    {"Minimum", 20, Rank::Minimum},
    {"Add Noise", 38},
    {"Find Contour", 22},
    {"Oil Painting", 40},
    {"Sketch", 32},
    {"Film Grain", 34},
    {"Splash", 35},
    {"Melting", 39},
    {"Ripple", 36},
    {"Wrinkle", 37},
    {"3D Grid", 51},
    {"Mosaic", 52},
    {"Emboss", 54},
    {"MotionBlur", 53},
    {"Fish Eye", 41},
    {"Cone", 48},
    {"Whirlpool", 49},
    {"Spiral", 50},
    {"Ribbon", 65},
};
constexpr int kRowCount = static_cast<int>(std::size(kRows));

// Lies on the stack of RunEffectBrowser, and outlives all loops.
struct BrowserContext {
    DocHandle document;
    i32* effectIdOut;
    void* paramBuffer;
};

i32 browserBufferSize = 0;
std::array<u8, kSnapshotBytes> snapshot;
int acceptedRow = -1;
// From the opening to OK or Cancel. What arrives later must not open another dialog.
bool browsing = false;

BrowserContext* ContextOf(HWND window) {
    return reinterpret_cast<BrowserContext*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

std::size_t BytesToKeep() {
    return static_cast<std::size_t>(std::clamp(browserBufferSize, 0, kSnapshotBytes));
}

int SelectedRow(HWND window) {
    return static_cast<int>(SendDlgItemMessageA(window, IDC_EFFECT_LIST, CB_GETCURSEL, 0, 0));
}

void Open(HWND window, BrowserContext* context) {
    snapshotValid = 0;
    if (context == nullptr) {
        return;
    }
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(context));
    browserWindow = window;
    embeddedDialog = nullptr;
    browsing = true;
    for (const BrowserRow& row : kRows) {
        SendDlgItemMessageA(window, IDC_EFFECT_LIST, CB_ADDSTRING, 0,
                            reinterpret_cast<LPARAM>(row.text));
    }
    SendDlgItemMessageA(window, IDC_EFFECT_LIST, CB_SETCURSEL, 0, 0);
    *context->effectIdOut = kFirstEffect;
    SetTimer(window, kFirstEffectTimer, kFirstEffectMilliseconds, nullptr);
}

void OpenFirstEffect(HWND window) {
    KillTimer(window, kFirstEffectTimer);
    const BrowserContext* context = ContextOf(window);
    if (browsing && embeddedDialog == nullptr && context != nullptr && context->document != 0) {
        OpenBrightnessContrast(kFirstEffect, GetParent(window), context->document,
                               context->paramBuffer);
    }
}

// Maximum and Minimum are one effect: the second word of its record tells them apart.
void PresetRank(const BrowserRow& row, void* paramBuffer) {
    if (row.rank != Rank::None && BytesToKeep() >= sizeof(RankFilterParams)) {
        static_cast<RankFilterParams*>(paramBuffer)->takeMaximum = row.rank == Rank::Maximum;
    }
}

// Called when the dialog of a row has come back. A row may have been shown more than once: the
// accepted dialog is the innermost one.
void SaveAcceptedRecord(int row, const void* paramBuffer) {
    if (row == acceptedRow && snapshotValid == 0) {
        std::memcpy(snapshot.data(), paramBuffer, BytesToKeep());
        snapshotValid = 1;
    }
}

void ChangeEffect(HWND window) {
    const int row = SelectedRow(window);
    const BrowserContext* context = ContextOf(window);
    if (row < 0 || row >= kRowCount || context == nullptr || context->document == 0) {
        return;
    }
    KillTimer(window, kFirstEffectTimer);
    if (const HWND dialog = std::exchange(embeddedDialog, nullptr); IsWindow(dialog)) {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
        DestroyWindow(dialog);
    }
    *context->effectIdOut = kRows[row].effect;
    PresetRank(kRows[row], context->paramBuffer);
    // Comes back when the dialog has ended, which may be long after the browser's window has.
    ShowEffectDialog(kRows[row].effect, GetParent(window), context->document, context->paramBuffer);
    SaveAcceptedRecord(row, context->paramBuffer);
}

void End(HWND window, INT_PTR result) {
    browsing = false;
    KillTimer(window, kFirstEffectTimer);
    EndDialog(window, result);
}

void Accept(HWND window) {
    if (const HWND dialog = std::exchange(embeddedDialog, nullptr); IsWindow(dialog)) {
        acceptedRow = SelectedRow(window);
        snapshotValid = 0;
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    }
    End(window, 1);
}

void Cancel(HWND window) {
    if (const HWND dialog = std::exchange(embeddedDialog, nullptr); IsWindow(dialog)) {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    }
    End(window, 0);
}

void Command(HWND window, int id, UINT code) {
    if (id == IDOK) {
        Accept(window);
    } else if (id == IDCANCEL) {
        Cancel(window);
    } else if (id == IDC_EFFECT_LIST && code == CBN_SELCHANGE && browsing) {
        ChangeEffect(window);
    }
}

INT_PTR CALLBACK BrowserProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        Open(window, reinterpret_cast<BrowserContext*>(lParam));
        return TRUE;
    case WM_TIMER:
        OpenFirstEffect(window);
        return TRUE;
    case WM_COMMAND:
        Command(window, LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    case WM_SETFOCUS:
        SetFocus(GetDlgItem(window, IDC_EFFECT_LIST));
        return TRUE;
    case WM_DESTROY:
        EndEmbedding();
        browserWindow = nullptr;
        embeddedDialog = nullptr;
        browsing = false;
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace

i32 RunEffectBrowser(HWND parent, DocHandle document, i32* effectId, void* paramBuffer,
                     i32 bufferSize) {
    if (effectId == nullptr || paramBuffer == nullptr) {
        return 0;
    }
    browserBufferSize = bufferSize;
    BrowserContext context{document, effectId, paramBuffer};
    const INT_PTR result =
        DialogBoxParamA(moduleInstance, MAKEINTRESOURCEA(IDD_EFFECT_BROWSER), parent,
                        BrowserProcedure, reinterpret_cast<LPARAM>(&context));
    if (result <= 0) {
        return 0;
    }
    if (snapshotValid != 0) {
        std::memcpy(paramBuffer, snapshot.data(), BytesToKeep());
    }
    return 1;
}

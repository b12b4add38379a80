#include "dialogs/dialog_frame.h"

#include "dialogs/embedding.h"
#include "dialogs/module_instance.h"
#include "dialogs/scroll_bars.h"
#include "image/document.h"
#include "preview/preview_control.h"
#include "preview/wiring.h"
#include "resources/resource.h"

#include <algorithm>
#include <cstring>

namespace {

void* ContextOf(HWND window) {
    return reinterpret_cast<void*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

// Tells the After pane that its record has changed. The pane takes it up at its next timer tick, so
// this may run at every step of a moved bar.
void RefreshAfter(const DialogKind& kind, HWND window, void* context) {
    const HWND after = GetDlgItem(window, IDC_AFTER);
    if (after == nullptr) {
        return;
    }
    void* record = kind.rebuildRecord(window, context);
    SendMessageA(after, kParamsChangedMessage, 0, reinterpret_cast<LPARAM>(record));
}

void EnableRadios(HWND window, int first, int last, BOOL enable) {
    for (int id = first; id <= last; ++id) {
        EnableWindow(GetDlgItem(window, id), enable);
    }
}

void ApplyGreyRule(GreyRule rule, HWND window) {
    switch (rule) {
    case GreyRule::None:
        break;
    case GreyRule::OneChannel: {
        char gray[256] = "";
        LoadStringA(moduleInstance, IDS_GRAY, gray, sizeof(gray));
        SetDlgItemTextA(window, IDC_CHANNEL_RGB, gray);
        EnableRadios(window, IDC_CHANNEL_R, IDC_CHANNEL_B, FALSE);
        break;
    }
    case GreyRule::NoChannel:
        CheckRadioButton(window, IDC_CHANNEL_RGB, IDC_CHANNEL_B, 0);
        EnableRadios(window, IDC_CHANNEL_RGB, IDC_CHANNEL_B, FALSE);
        break;
    }
}

DocHandle DocumentOf(const void* context) {
    DocHandle document = 0;
    std::memcpy(&document, context, sizeof(document));
    return document;
}

void Open(const DialogKind& kind, HWND window, void* context) {
    WirePreviews(window, context, kind.effect);
    if (context == nullptr) {
        return;
    }
    OpenScrollBars(window, kind.dialog);
    for (const RadioGroup& group : kind.radioGroups) {
        CheckRadioButton(window, group.first, group.last, group.first);
    }
    if (IsGreyDocument(DocumentOf(context)) != 0) {
        ApplyGreyRule(kind.greyRule, window);
    }
    RefreshAfter(kind, window, context);
}

bool IsRadio(const DialogKind& kind, int id) {
    return std::ranges::any_of(kind.radioGroups, [id](const RadioGroup& group) {
        return id >= group.first && id <= group.last;
    });
}

void Command(const DialogKind& kind, HWND window, void* context, int id) {
    if (id == IDCANCEL || (id == IDOK && context == nullptr)) {
        EndDialog(window, kind.cancelledResult);
    } else if (id == IDOK) {
        kind.rebuildRecord(window, context);
        FinishEmbedded(window);
        EndDialog(window, kind.acceptedResult(window, context));
    } else if (IsRadio(kind, id) && context != nullptr) {
        RefreshAfter(kind, window, context);
    }
}

} // namespace

INT_PTR RunDialogProcedure(const DialogKind& kind, HWND window, UINT message, WPARAM wParam,
                           LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        Open(kind, window, reinterpret_cast<void*>(lParam));
        return TRUE;
    case WM_HSCROLL:
        if (void* context = ContextOf(window);
            context != nullptr && FollowScrollBar(window, kind.dialog, wParam, lParam)) {
            RefreshAfter(kind, window, context);
        }
        return TRUE;
    case WM_COMMAND:
        Command(kind, window, ContextOf(window), LOWORD(wParam));
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR RunDialogModally(const DialogKind& kind, DLGPROC procedure, HWND parent, void* context) {
    return DialogBoxParamA(moduleInstance, MAKEINTRESOURCEA(kind.dialog), parent, procedure,
                           reinterpret_cast<LPARAM>(context));
}

int CheckedRadio(HWND window, const RadioGroup& group) {
    for (int id = group.first; id <= group.last; ++id) {
        if (IsDlgButtonChecked(window, id) == BST_CHECKED) {
            return id - group.first;
        }
    }
    return -1;
}

INT_PTR AcceptedWithOne(HWND, const void*) {
    return 1;
}

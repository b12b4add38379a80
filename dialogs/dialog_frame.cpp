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

void RefreshAfter(const DialogKind& kind, HWND window, void* context) {
    if (GetDlgItem(window, IDC_AFTER) != nullptr) {
        ShowInAfterPane(window, kind.rebuildRecord(window, context));
    }
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
    case GreyRule::PencilOnly:
        CheckRadioButton(window, IDC_CRAYON, IDC_PENCIL, IDC_PENCIL);
        EnableRadios(window, IDC_CRAYON, IDC_CRAYON, FALSE);
        break;
    }
}

DocHandle DocumentOf(const void* context) {
    DocHandle document = 0;
    std::memcpy(&document, context, sizeof(document));
    return document;
}

EffectId EffectOf(const DialogKind& kind, const void* context) {
    return kind.servedEffect == nullptr ? kind.effect : kind.servedEffect(context).effect;
}

void ShowCaption(HWND window, UINT caption) {
    char text[256] = "";
    LoadStringA(moduleInstance, caption, text, sizeof(text));
    SetWindowTextA(window, text);
}

// Gives whether the focus has been set.
bool OpenControls(const DialogKind& kind, HWND window, void* context) {
    OpenScrollBars(window, kind.dialog, EffectOf(kind, context));
    for (const RadioGroup& group : kind.radioGroups) {
        CheckRadioButton(window, group.first, group.last, group.first + group.start);
    }
    if (kind.servedEffect != nullptr) {
        ShowCaption(window, kind.servedEffect(context).caption);
    }
    const bool focusIsSet = kind.openControls != nullptr && kind.openControls(window, context);
    if (kind.greyRule != GreyRule::None && IsGreyDocument(DocumentOf(context)) != 0) {
        ApplyGreyRule(kind.greyRule, window);
    }
    return focusIsSet;
}

// Gives whether the focus has been set. A dialog that serves several effects is wired once the
// context has told which.
bool Open(const DialogKind& kind, HWND window, void* context) {
    if (kind.servedEffect == nullptr) {
        WirePreviews(window, context, kind.effect);
    }
    EmbedInBrowser(window);
    if (context == nullptr) {
        return false;
    }
    if (kind.servedEffect != nullptr) {
        WirePreviews(window, context, EffectOf(kind, context));
    }
    const bool focusIsSet = OpenControls(kind, window, context);
    RefreshAfter(kind, window, context);
    return focusIsSet;
}

void FollowChange(const DialogKind& kind, HWND window, void* context) {
    RefreshAfter(kind, window, context);
    if (kind.changed != nullptr) {
        kind.changed(window, context);
    }
}

// Gives FALSE when the system is to leave the focus where it is.
INT_PTR Initialise(const DialogKind& kind, HWND window, void* context) {
    const bool focusIsSet = Open(kind, window, context);
    return LeaveFocusToBrowser(window) || focusIsSet ? FALSE : TRUE;
}

bool FollowBar(const DialogKind& kind, HWND window, void* context, WPARAM wParam, LPARAM lParam) {
    if (kind.followScrollBar != nullptr) {
        return kind.followScrollBar(window, context, wParam, lParam);
    }
    return FollowScrollBar(window, kind.dialog, EffectOf(kind, context), wParam, lParam);
}

bool IsRadio(const DialogKind& kind, int id) {
    return std::ranges::any_of(kind.radioGroups, [id](const RadioGroup& group) {
        return id >= group.first && id <= group.last;
    });
}

// A command of another control than OK and Cancel. Gives whether the After pane is to follow.
bool CarryOut(const DialogKind& kind, HWND window, void* context, int id, UINT code) {
    return IsRadio(kind, id) ||
           (kind.command != nullptr && kind.command(window, context, id, code));
}

void Command(const DialogKind& kind, HWND window, void* context, int id, UINT code) {
    if ((id == IDOK || id == IDCANCEL) && PassToBrowser(window, id)) {
        return;
    }
    if (id == IDCANCEL || (id == IDOK && context == nullptr)) {
        EndDialog(window, kind.cancelledResult);
    } else if (id == IDOK) {
        kind.rebuildRecord(window, context);
        FinishEmbedded(window);
        EndDialog(window, kind.acceptedResult(window, context));
    } else if (context != nullptr && CarryOut(kind, window, context, id, code)) {
        FollowChange(kind, window, context);
    }
}

} // namespace

INT_PTR RunDialogProcedure(const DialogKind& kind, HWND window, UINT message, WPARAM wParam,
                           LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return Initialise(kind, window, reinterpret_cast<void*>(lParam));
    case WM_HSCROLL:
        if (void* context = ContextOf(window);
            context != nullptr && FollowBar(kind, window, context, wParam, lParam)) {
            FollowChange(kind, window, context);
        }
        return TRUE;
    case WM_COMMAND:
        Command(kind, window, ContextOf(window), LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    default:
        return kind.otherMessage == nullptr
                   ? FALSE
                   : kind.otherMessage(window, ContextOf(window), message, wParam, lParam);
    }
}

INT_PTR RunDialogModally(const DialogKind& kind, DLGPROC procedure, HWND parent, void* context) {
    return DialogBoxParamA(moduleInstance, MAKEINTRESOURCEA(kind.dialog), parent, procedure,
                           reinterpret_cast<LPARAM>(context));
}

void ShowInAfterPane(HWND window, void* record) {
    SendDlgItemMessageA(window, IDC_AFTER, kParamsChangedMessage, 0,
                        reinterpret_cast<LPARAM>(record));
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

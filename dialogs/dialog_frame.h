// What all parameter dialogs have in common. A dialog is described by a DialogKind; one procedure
// runs them all.
#pragma once

#include "platform/win32.h"

#include "platform/types.h"
#include <zq/document.h>

#include <span>

// Every context of a dialog is a block of its own kind that lives on its opener's stack as long as
// the dialog runs. It begins with the document's handle (see WirePreviews), and the record that the
// After pane reads lies in it or in the caller's buffer, at one address all the while.

// A group of radio buttons with consecutive ids, of which one is checked at opening. A click on any
// of them refreshes the After pane.
struct RadioGroup {
    int first;
    int last;
    int start = 0; // index of the one that is checked at opening
};

// What a dialog does when the document is grey.
enum class GreyRule {
    None,
    OneChannel, // the channel group offers "Gray" alone
    NoChannel,  // the channel group offers nothing
    PencilOnly, // the styles offer "Pencil" alone
};

// What a dialog that serves several effects was opened for.
struct ServedEffect {
    EffectId effect;
    UINT caption; // string resource
};

// The accepted result of dialogs that end with 1.
INT_PTR AcceptedWithOne(HWND window, const void* context);

// A dialog procedure that gets the dialog's context, too.
using ContextProcedure = INT_PTR (*)(HWND window, void* context, UINT message, WPARAM wParam,
                                     LPARAM lParam);

struct DialogKind {
    int dialog; // resource id of the template
    EffectId effect = 0;
    // Instead of `effect`, for a dialog that serves several.
    ServedEffect (*servedEffect)(const void* context) = nullptr;
    GreyRule greyRule = GreyRule::None;
    std::span<const RadioGroup> radioGroups = {};
    // Brings the record that the After pane reads in line with the controls and gives its address.
    void* (*rebuildRecord)(HWND window, void* context);
    // What the dialog ends with after OK; the record has been rebuilt before.
    INT_PTR (*acceptedResult)(HWND window, const void* context) = AcceptedWithOne;
    INT_PTR cancelledResult;

    // What only some dialogs have.
    // Sets further controls at opening. Gives whether it has set the focus, too.
    bool (*openControls)(HWND window, void* context) = nullptr;
    // Carries a WM_HSCROLL message out in its own way; otherwise as FollowScrollBar.
    bool (*followScrollBar)(HWND window, void* context, WPARAM wParam, LPARAM lParam) = nullptr;
    // A command that is neither OK, Cancel nor a radio, with its notification code. Gives whether
    // the After pane is to follow.
    bool (*command)(HWND window, void* context, int id, UINT code) = nullptr;
    // What follows a change when the After pane has been told of it.
    void (*changed)(HWND window, void* context) = nullptr;
    // Any other message; there may be no context yet.
    ContextProcedure otherMessage = nullptr;
};

// The work of every dialog procedure.
INT_PTR RunDialogProcedure(const DialogKind& kind, HWND window, UINT message, WPARAM wParam,
                           LPARAM lParam);

template <const DialogKind& kind>
INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunDialogProcedure(kind, window, message, wParam, lParam);
}

INT_PTR RunDialogModally(const DialogKind& kind, DLGPROC procedure, HWND parent, void* context);

// Runs a dialog modally with `context` as its block. Gives what it ended with, -1 also when it
// could not be opened.
template <const DialogKind& kind>
INT_PTR RunDialog(HWND parent, void* context) {
    return RunDialogModally(kind, DialogProcedure<kind>, parent, context);
}

// Tells the After pane that the record at an address has changed. The pane takes it up at its next
// timer tick, so this may run at every step of a moved bar.
void ShowInAfterPane(HWND window, void* record);

// The index of the first checked radio of a group; -1 when none is.
int CheckedRadio(HWND window, const RadioGroup& group);

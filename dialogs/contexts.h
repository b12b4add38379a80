// The two usual blocks of a dialog, and how their openers run it.
#pragma once

#include "dialogs/dialog_frame.h"

// The dialog works in its own record, which the caller gets after OK.
template <class Params>
struct OwnRecordContext {
    DocHandle document;
    Params record;
};

// The dialog works in the caller's buffer itself.
template <class Params>
struct CallersBufferContext {
    DocHandle document;
    Params* record;
};

// Gives 1 after OK; 0 after Cancel and when the dialog could not be opened.
template <const DialogKind& kind, class Params>
i32 RunOnOwnRecord(HWND parent, DocHandle document, void* params) {
    OwnRecordContext<Params> context{document, {}};
    if (RunDialog<kind>(parent, &context) <= 0) {
        return 0;
    }
    *static_cast<Params*>(params) = context.record;
    return 1;
}

// `record` holds its defaults. Gives 1 after OK, 0 after Cancel and -1 when the dialog could not be
// opened.
template <const DialogKind& kind, class Params>
i32 RunOnCallersBuffer(HWND parent, DocHandle document, Params* record) {
    CallersBufferContext<Params> context{document, record};
    return static_cast<i32>(RunDialog<kind>(parent, &context));
}

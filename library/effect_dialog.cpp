#include "library/effect_dialog.h"

#include "dialogs/catalogue.h"
#include "editors/openers.h"

#include <cstring>

namespace {

// Null for an effect without a dialog.
Opener OpenerOf(EffectId effect) {
    const Opener opener = FindOpener(effect);
    return opener != nullptr ? opener : FindEditorOpener(effect);
}

bool EndsWithItsRecord(EffectId effect) {
    const EffectRow* row = FindEffectRow(effect);
    return row != nullptr && row->written == RecordWritten::AsResult;
}

// The answer for a dialog that ended with the one word of its record, or below 0 at Cancel.
i32 StoreWord(i32 word, void* paramBuffer) {
    if (word < 0) {
        return 0;
    }
    std::memcpy(paramBuffer, &word, sizeof(word));
    return 1;
}

} // namespace

bool HasDialog(EffectId effect) {
    return OpenerOf(effect) != nullptr;
}

i32 ShowEffectDialog(EffectId effect, HWND parent, DocHandle document, void* paramBuffer) {
    const Opener opener = OpenerOf(effect);
    if (opener == nullptr) {
        return kNoDialog;
    }
    if (paramBuffer == nullptr) {
        return 0;
    }
    const i32 result = opener(effect, parent, document, paramBuffer);
    if (EndsWithItsRecord(effect)) {
        return StoreWord(result, paramBuffer);
    }
    return result == 0 || result == 1 ? result : kNoDialog;
}

// The three functions that a host calls.
#include "dialogs/catalogue.h"
#include "editors/openers.h"
#include "library/effect_browser.h"
#include "platform/win32.h"
#include "preview/background.h"
#include <zq/zqui.h>

#include <cstring>

namespace {

constexpr i32 kNoDialog = -2;

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

i32 ZQ_CALL GetZQParam(i32 effectId, void* parent, DocHandle document, void* paramBuffer) {
    const Opener opener = OpenerOf(effectId);
    if (opener == nullptr) {
        return kNoDialog;
    }
    if (paramBuffer == nullptr) {
        return 0;
    }
    const i32 result = opener(effectId, static_cast<HWND>(parent), document, paramBuffer);
    if (EndsWithItsRecord(effectId)) {
        return StoreWord(result, paramBuffer);
    }
    return result == 0 || result == 1 ? result : kNoDialog;
}

i32 ZQ_CALL GetZQBrowserParam(void* parent, DocHandle document, i32* effectId, void* paramBuffer,
                              i32 bufferSize) {
    return RunEffectBrowser(static_cast<HWND>(parent), document, effectId, paramBuffer, bufferSize);
}

i32 ZQ_CALL GetZquiBackgroundSetting(i32 word0, u32 word1, u32 word2) {
    backgroundWord0 = word0;
    backgroundWord1 = word1;
    backgroundWord2 = word2;
    return 1;
}

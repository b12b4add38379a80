// The three functions that a host calls.
#include "dialogs/openers.h"
#include "library/effect_browser.h"
#include "platform/win32.h"
#include "preview/background.h"
#include <zq/zqui.h>

namespace {

constexpr i32 kNoDialog = -2;

} // namespace

i32 ZQ_CALL GetZQParam(i32 effectId, void* parent, DocHandle document, void* paramBuffer) {
    const Opener opener = FindOpener(effectId);
    if (opener == nullptr) {
        return kNoDialog;
    }
    if (paramBuffer == nullptr) {
        return 0;
    }
    const i32 result = opener(effectId, static_cast<HWND>(parent), document, paramBuffer);
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

// The three functions that a host calls.
#include "library/effect_browser.h"
#include "library/effect_dialog.h"
#include "platform/win32.h"
#include "preview/background.h"
#include <zq/zqui.h>

#include <atomic>

namespace {

std::atomic<bool> oneRuns = false;

// The one dialog or browser at a time. False when another one is open, and on a thread that may not
// show windows: what dialogs share has no locks. A second one might come from a timer of the host.
class Turn {
public:
    Turn() : taken_(IsGUIThread(TRUE) && !oneRuns.exchange(true)) {}
    ~Turn() {
        if (taken_) {
            oneRuns = false;
        }
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    explicit operator bool() const { return taken_; }

private:
    const bool taken_;
};

} // namespace

i32 ZQ_CALL GetZQParam(i32 effectId, void* parent, DocHandle document, void* paramBuffer) {
    if (!HasDialog(effectId)) {
        return kNoDialog;
    }
    const Turn turn;
    return turn ? ShowEffectDialog(effectId, static_cast<HWND>(parent), document, paramBuffer) : 0;
}

i32 ZQ_CALL GetZQBrowserParam(void* parent, DocHandle document, i32* effectId, void* paramBuffer,
                              i32 bufferSize) {
    const Turn turn;
    return turn ? RunEffectBrowser(static_cast<HWND>(parent), document, effectId, paramBuffer,
                                   bufferSize)
                : 0;
}

i32 ZQ_CALL GetZquiBackgroundSetting(i32 word0, u32 word1, u32 word2) {
    if (!IsGUIThread(TRUE)) {
        return 0;
    }
    backgroundWord0 = word0;
    backgroundWord1 = word1;
    backgroundWord2 = word2;
    return 1;
}

#include "editors/openers.h"

Opener FindEditorOpener(EffectId effect) {
    switch (effect) {
    case 67:
        return OpenToneAdjustment;
    default:
        return nullptr;
    }
}

#include "editors/openers.h"

Opener FindEditorOpener(EffectId effect) {
    switch (effect) {
    case 25:
        return OpenUsersFilter;
    case 56:
        return OpenMagicMirror;
    case 67:
        return OpenToneAdjustment;
    default:
        return nullptr;
    }
}

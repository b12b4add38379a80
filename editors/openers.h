// The openers of the editors; see dialogs/openers.h.
#pragma once

#include "dialogs/openers.h"

i32 OpenUsersFilter(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenMagicMirror(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenToneAdjustment(EffectId effect, HWND parent, DocHandle document, void* params);

// The opener of an effect; null for one without an editor.
Opener FindEditorOpener(EffectId effect);

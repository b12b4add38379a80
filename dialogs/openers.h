// The openers: one function per dialog that fills its context, stores the defaults, runs it modally
// and hands the record back.
#pragma once

#include "platform/win32.h"

#include "platform/types.h"
#include <zq/document.h>

// Gives 1 after OK and 0 after Cancel. A dialog that cannot be opened gives 0, or -1 where the
// caller's buffer is the working record.
using Opener = i32 (*)(EffectId effect, HWND parent, DocHandle document, void* params);

i32 OpenBrightnessContrast(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenHueSaturation(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenColorReduction(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenThreshold(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenSquareSize(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenUnsharpMask(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenFindContour(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenSketch(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenGrid3D(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenMosaic(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenMotionBlur(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenEmboss(EffectId effect, HWND parent, DocHandle document, void* params);
i32 OpenRibbon(EffectId effect, HWND parent, DocHandle document, void* params);
// Leaves the buffer alone and gives the intensity, a negative number for Cancel.
i32 OpenIntensity(EffectId effect, HWND parent, DocHandle document, void* params);

// The opener of an effect; null for one without a dialog.
Opener FindOpener(EffectId effect);

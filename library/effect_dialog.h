// The dialog of one effect, whichever folder it comes from.
#pragma once

#include "platform/types.h"
#include "platform/win32.h"
#include <zq/document.h>

constexpr i32 kNoDialog = -2;

bool HasDialog(EffectId effect);

// What GetZQParam does when no other dialog is open.
i32 ShowEffectDialog(EffectId effect, HWND parent, DocHandle document, void* paramBuffer);

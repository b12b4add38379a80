// The two roads of an effect on a layer: straight on its image, or on image and mask together.
#pragma once

#include "platform/types.h"
#include <zq/engine.h>

// ApplyEffectToLayer, in the public header, chooses between these two; arguments and answers are
// the same.
u8 ApplyEffectPlain(LayerEntry* entry, EffectId id, const void* params, u8 keepOriginal);
u8 ApplyEffectMasked(LayerEntry* entry, EffectId id, const void* params, u8 keepOriginal,
                     u8 ignoreMask);

// A new copy of `image` with each colour byte c at mask byte m turned into c * m / 255, or 0.
// Both must have one size; the image has 24 or 8 bits, the mask 8.
DibHandle PremultiplyByMask(DibHandle image, DibHandle mask);

// Turns each colour byte c of `image` at mask byte m above 0 into the low 8 bits of c * 255 / m, in
// place, and gives 1; 0 with nothing changed when the two do not fit.
i32 DivideByMask(DibHandle image, DibHandle mask);

// Accessors on a DIB's handle. Each locks and unlocks for itself.
#pragma once

#include "platform/types.h"
#include <zq/document.h>

// 1 for a grey image: 8 bits and exactly 256 palette entries, entry i being (i, i, i). Else 0.
i32 IsGreyPaletteDib(DibHandle dib);

// Stores width and height through each pointer that is not null and gives 1; 0 for a null handle or
// one that cannot be locked.
i32 GetDibSize(DibHandle dib, i32* width, i32* height);

// 1 grey, 2 24-bit, 3 8-bit palette, 4 4-bit, 5 1-bit; 0 for a null handle or any other depth.
i32 ClassifyDib(DibHandle dib);

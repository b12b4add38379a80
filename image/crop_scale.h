// Cuts a region out of a picture and resamples it to a target size in one pass.
#pragma once

#include "platform/types.h"
#include <zq/document.h>

// Gives a new DIB that the caller frees, or 0. `x` and `y` are the region's first column and first
// stored row, not negative. 24-bit and grey pictures are mixed from two by two neighbours, 1-bit
// pictures take the nearest pixel; an 8-bit palette picture gives its palette and pixels of index
// 0; other depths give 0. Columns and rows beyond the source stay zero.
DibHandle CropAndScaleDib(DibHandle source, i32 x, i32 y, i32 regionWidth, i32 regionHeight,
                          i32 targetWidth, i32 targetHeight);

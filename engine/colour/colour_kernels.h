// Kernels that turn each colour by itself. Each gives a new DIB, or 0.
#pragma once

#include "platform/types.h"
#include <zq/document.h>
#include <zq/params.h>

DibHandle BrightnessContrast(DibHandle source, const BrightnessContrastParams& params);
DibHandle ToneTable(DibHandle source, const ToneTableParams& params);
DibHandle ColorReduction(DibHandle source, const ColorReductionParams& params);

// Kernels that turn each colour by itself. Each gives a new DIB, or 0.
#pragma once

#include "platform/types.h"
#include <zq/document.h>
#include <zq/params.h>

DibHandle BrightnessContrast(DibHandle source, const BrightnessContrastParams& params);
DibHandle ToneTable(DibHandle source, const ToneTableParams& params);
DibHandle ColorReduction(DibHandle source, const ColorReductionParams& params);
DibHandle HueSaturation(DibHandle source, const HueSaturationParams& params);
DibHandle Equalize(DibHandle source);
DibHandle Negative(DibHandle source);
DibHandle Threshold(DibHandle source, const ThresholdParams& params);
DibHandle ToneFold(DibHandle source);
DibHandle LogTone(DibHandle source);
DibHandle ToneAdjustment(DibHandle source, const ToneAdjustmentParams& params);
DibHandle WhitePointScale(DibHandle source, i32 gain);

// The reference kernels. Each gives false where the engine refuses; otherwise it fills the run's
// result.
#pragma once

#include "tests/engine/reference/reference_run.h"
#include <zq/params.h>

struct NoParams {};

bool BrightnessContrastReference(ReferenceRun& run, const BrightnessContrastParams& params);
bool HueSaturationReference(ReferenceRun& run, const HueSaturationParams& params);
bool ToneTableReference(ReferenceRun& run, const ToneTableParams& params);
bool ColorReductionReference(ReferenceRun& run, const ColorReductionParams& params);
bool EqualizeReference(ReferenceRun& run, const NoParams& params);
bool NegativeReference(ReferenceRun& run, const NoParams& params);
bool ThresholdReference(ReferenceRun& run, const ThresholdParams& params);
bool ToneAdjustmentReference(ReferenceRun& run, const ToneAdjustmentParams& params);
bool WhitePointReference(ReferenceRun& run, const WhitePointParams& params);
bool ToneFoldReference(ReferenceRun& run, const NoParams& params);
bool LogToneReference(ReferenceRun& run, const NoParams& params);

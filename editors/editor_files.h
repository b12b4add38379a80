// Curve and filter files as records. What a file does not hold stays as it was.
#pragma once

#include "platform/types.h"
#include <zq/params.h>

// Takes mapping and curve, as many entries as the file has. The mapping may be one that no kernel
// knows. False, with nothing changed, when the file is none.
bool ReadCurveFile(const char* path, MagicMirrorParams& params);

// Takes cells, scale, bias and symmetry, as far as the payload goes. False, with nothing changed,
// when the file is none.
bool ReadFilterFile(const char* path, UserFilterParams& params);

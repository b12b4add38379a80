// Curves of Magic Mirror in files, ".mmc".
#pragma once

#include <zq/params.h>

// Takes mapping and curve, as many entries as the file has; the others stay as they were. The
// mapping may be one that no kernel knows. False, with nothing changed, when the file is none.
bool ReadCurveFile(const char* path, MagicMirrorParams& params);

// False when the file cannot be created.
bool WriteCurveFile(const char* path, const MagicMirrorParams& params);

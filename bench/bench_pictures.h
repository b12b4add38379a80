// The pictures that effects are timed on.
#pragma once

#include "engine/block.h"

constexpr i32 kBenchWidth = 4000;
constexpr i32 kBenchHeight = 3000;

// A photograph, mirrored from tile to tile so that it has no seams, under slow light and shade, so
// that no two tiles are alike. 24 bits, or its brightness as a grey picture; 0 when there is no
// photograph.
OwnedBlock MakeBenchPicture(i32 width, i32 height, bool grey);

// Picture files as a layer's two DIBs.
#pragma once

#include "pictures/dib_rows.h"

// Reads a picture in a depth that effects and previews work on: grey, or 24 bits for all others, so
// that a palette is no bar. `mask` receives the picture's transparency, or 255 everywhere.
PictureResult ReadLayer(const char* path, OwnedBlock& image, OwnedBlock& mask);

// Reads a picture as a mask: its transparency if it has one, else its brightness.
PictureResult ReadMask(const char* path, OwnedBlock& mask);

// A mask of 255 for a picture of this size.
PictureResult NewWhiteMask(u32 width, u32 height, OwnedBlock& mask);

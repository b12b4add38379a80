// What the targets of all picture formats do with a file.
#pragma once

#include "fuzz/fuzz_target.h"

// Reads the file as a picture, and as a layer and a mask.
void ReadPictureBytes(std::span<const u8> file);

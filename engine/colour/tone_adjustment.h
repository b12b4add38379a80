// The tone curve of Tone Adjustment, shared by its kernel and the graph of its dialog.
#pragma once

#include "platform/types.h"

#include <array>

// The new value of each old one.
//
// `highlight` above 0 makes all values from 255 - highlight up white, below 0 it lowers white;
// `shadow` below 0 makes all values up to -shadow black, above 0 it lifts black; `midtone` bends
// the curve between them, up for a positive one and far more strongly down for a negative one. The
// kernel calls it with -100..100, the graph with twice that; any numbers are taken.
std::array<u8, 256> BuildToneTable(i32 highlight, i32 midtone, i32 shadow);

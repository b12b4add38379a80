// Which cells of a user's filter follow a cell that was changed.
#pragma once

#include "platform/types.h"

#include <vector>

constexpr int kFilterSide = 5;
constexpr int kFilterCells = kFilterSide * kFilterSide;

// By their radio buttons' places.
enum class FilterSymmetry { None, Horizontal, Vertical, FourWay };

// In the order in which they are written, never the cell itself. Cells count row by row from the
// top left. Under FourWay the arms of the cross through the centre are one, too.
std::vector<int> MirroredCells(int cell, FilterSymmetry symmetry);

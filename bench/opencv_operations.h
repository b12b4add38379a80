// OpenCV's nearest relatives of the effects. Each keeps what it prepares, tables and pictures in
// between, from run to run.
#pragma once

#include "bench/compare_rows.h"
#include <zq/params.h>

OpenCvOperation OneTable();
OpenCvOperation ThreeTables();
OpenCvOperation TurnHue();
OpenCvOperation SpreadTones();
OpenCvOperation Invert();
OpenCvOperation GreyThreshold();

OpenCvOperation Box(i32 size);
OpenCvOperation BoxAndSource(i32 size, double shareOfSource);
OpenCvOperation Gaussian(i32 size);
OpenCvOperation Dilate(i32 size);
OpenCvOperation Median(i32 size);
OpenCvOperation SmoothBetweenEdges();
OpenCvOperation LineFilter();
OpenCvOperation InnerOutline();
OpenCvOperation SobelSum();
OpenCvOperation MapAndSharpen();
OpenCvOperation CellFilter(const UserFilterParams& filter);
OpenCvOperation LeastRay(i32 radius);

OpenCvOperation OilPaint(i32 radius);
OpenCvOperation AddRandom();
OpenCvOperation ReplaceByRandom();

enum class MapKind {
    Scattered, // each pixel from some place near its own
    Twisted,   // the picture turned more toward its centre
    Stretched, // columns shifted, more or less from row to row
};
OpenCvOperation Remap(MapKind kind);

OpenCvOperation AddPattern();
OpenCvOperation ShrinkAndGrow(i32 size);
OpenCvOperation Difference(bool withoutColour);
OpenCvOperation Row(i32 size);
OpenCvOperation Column(i32 size);
OpenCvOperation Diagonal(i32 size);

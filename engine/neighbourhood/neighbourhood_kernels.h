// Kernels that look at the pixels around each one. Each gives a new DIB, or 0.
#pragma once

#include "platform/types.h"
#include <zq/document.h>
#include <zq/params.h>

DibHandle AverageBlur(DibHandle source, const SquareSizeParams& params);
DibHandle CentreWeightedBlur(DibHandle source, const CentreWeightedParams& params);
DibHandle EdgeKeepingSmooth(DibHandle source);
DibHandle GaussianBlur(DibHandle source, const SquareSizeParams& params);
DibHandle UnsharpMask(DibHandle source, const UnsharpMaskParams& params);
DibHandle LineSharpen(DibHandle source, const LineSharpenParams& params);
DibHandle RankFilter(DibHandle source, const RankFilterParams& params);
DibHandle MedianFilter(DibHandle source, const SquareSizeParams& params);
DibHandle FindContour(DibHandle source, const FindContourParams& params);
DibHandle UserFilter(DibHandle source, const UserFilterParams& params);
DibHandle EdgeFade(DibHandle source, const EdgeFadeParams& params);

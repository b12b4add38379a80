// Kernels that give a picture relief, motion or a grid. Each gives a new DIB, or 0.
#pragma once

#include "platform/types.h"
#include <zq/document.h>
#include <zq/params.h>

DibHandle Grid3D(DibHandle source, const Grid3DParams& params);
DibHandle Mosaic(DibHandle source, const MosaicParams& params);
DibHandle MotionBlur(DibHandle source, const MotionBlurParams& params);
DibHandle Emboss(DibHandle source, const EmbossParams& params);

// Kernels that move pixels along a curve. Each gives a new DIB, or 0.
#pragma once

#include "platform/types.h"
#include <zq/document.h>
#include <zq/params.h>

DibHandle RadialWarp(DibHandle source, const RadialWarpParams& params);
DibHandle Cone(DibHandle source, i32 intensity);
DibHandle ArcsineBulge(DibHandle source);
DibHandle Fisheye(DibHandle source, i32 intensity);

DibHandle AngularWarp(DibHandle source, const AngularWarpParams& params);
DibHandle Spiral(DibHandle source, i32 intensity);
DibHandle Whirlpool(DibHandle source, i32 intensity);

DibHandle MagicMirror(DibHandle source, const MagicMirrorParams& params);
DibHandle RibbonWarp(DibHandle source, const RibbonParams& params);
DibHandle ArcsineStretch(DibHandle source);

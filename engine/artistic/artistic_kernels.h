// Kernels that make a picture look drawn, grainy or disturbed. Each gives a new DIB, or 0.
#pragma once

#include "platform/types.h"
#include <zq/document.h>
#include <zq/params.h>

DibHandle Sketch(DibHandle source, const SketchParams& params);
DibHandle AutoEnhance(DibHandle source, i32 intensity);
DibHandle FilmGrain(DibHandle source, i32 intensity);
DibHandle Splash(DibHandle source, i32 intensity);
DibHandle Ripple(DibHandle source, i32 intensity);
DibHandle Wrinkle(DibHandle source, const WrinkleParams& params);
DibHandle AddNoise(DibHandle source, i32 intensity);
DibHandle Melting(DibHandle source, i32 intensity);
DibHandle OilPainting(DibHandle source, i32 intensity);

// DIBs as images that Qt paints.
#pragma once

#include <zq/document.h>

#include <QImage>

// An image of a DIB of any depth, with a mask of the same size as its transparency. Opaque where
// the mask is 0 (none) or 255 everywhere; null when `dib` is no picture.
QImage ImageOfDib(DibHandle dib, DibHandle mask);

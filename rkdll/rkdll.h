/** @file
 *  Contract of the imaging library `RKDLL`, which renders documents to the screen. Any library that
 *  keeps it can take the place of the one that comes with the system. Valid C and C++ (with the
 *  platform's HDC and RECT declared before).
 */
#ifndef ZQ_RKDLL_H
#define ZQ_RKDLL_H

#include <zq/document.h>
#include <zq/platform.h>

#ifdef __cplusplus
#include "platform/win32.h"
#endif

ZQ_EXTERN_C_BEGIN

/** Background of a rendered document: three words in this order.
 *
 *  What they choose in this implementation: `word0` 0 is a checkerboard of 8-pixel squares in the
 *  greys 255 and 204, 1 the plain colour `word1`, 2 a checkerboard of the colours `word1` and
 *  `word2`; any other value counts as 0. The first colour has the canvas's top left square. Colours
 *  are 0x00BBGGRR. */
typedef struct RkBackground {
    int32_t word0;
    uint32_t word1;
    uint32_t word2;
} RkBackground;

/** Renders a document.
 *
 *  Composes its layers in order, each with its mask as coverage, over the background. A layer
 *  without a mask is opaque; what lies outside a mask that is smaller than its image does not show.
 *  @param layer       -1: all layers; else the index of the one to render
 *  @param zero        0
 *  @param background  null counts as three words of 0
 *  @return a 24-bit DIB of the canvas's size, which the caller frees with GlobalFree, or 0 */
ZQ_API DibHandle ZQ_CALL RkImageCropToDib(DocHandle document, int32_t layer, int32_t zero,
                                          const RkBackground* background);

/** Draws a DIB into a rectangle (left, top, right, bottom) of a device context. The three last
 *  arguments are 0. Gives 1, or 0 when nothing could be drawn. */
ZQ_API int32_t ZQ_CALL RkDibDisplay(HDC dc, const RECT* rectangle, DibHandle dib, int32_t zero1,
                                    int32_t zero2, int32_t zero3);

/** Frees a document with the images and masks of its layers. Null, or a block that is too short for
 *  a document, is left alone. */
ZQ_API void ZQ_CALL RkImageDelete(DocHandle document);

ZQ_EXTERN_C_END

#endif

/** @file
 *  The two formats that a host and the library share: the packed DIB and the document record.
 *  All values are little-endian. Valid C and C++.
 */
#ifndef ZQ_DOCUMENT_H
#define ZQ_DOCUMENT_H

#include <stddef.h>
#include <stdint.h>

/** Handle of a moveable block (see memory.h) that holds a packed DIB; 0 is none. */
typedef uint32_t DibHandle;
/** Handle of a moveable block that holds an ImageDocument; 0 is none. */
typedef uint32_t DocHandle;
/** Number of an effect, 1 to 70 with gaps. */
typedef int32_t EffectId;

/** Head of a packed DIB.
 *
 *  One block holds this header, then `biClrUsed` palette entries of four bytes (blue, green, red,
 *  reserved), then the pixel rows, with no gap. Row 0 is the bottom row of the picture; each row is
 *  padded to a multiple of 4 bytes. A 24-bit pixel is blue, green, red; a 4-bit byte holds its left
 *  pixel in the high nibble; a 1-bit byte holds its leftmost pixel in bit 7.
 *
 *  An 8-bit DIB with 256 palette entries in which entry i is (i, i, i) is a grey picture. */
typedef struct DibHeader {
    uint32_t biSize;         /**< always 40 */
    int32_t biWidth;         /**< pixels, 1 or more */
    int32_t biHeight;        /**< pixels, 1 or more; rows run from the bottom up */
    uint16_t biPlanes;       /**< carried, never read */
    uint16_t biBitCount;     /**< 24, 8, 4 or 1 */
    uint32_t biCompression;  /**< carried, never read: pixels are uncompressed */
    uint32_t biSizeImage;    /**< carried */
    int32_t biXPelsPerMeter; /**< carried, never read */
    int32_t biYPelsPerMeter; /**< carried, never read */
    uint32_t biClrUsed; /**< palette entries, literally: 0 is no palette; must be 0 at 24 bits */
    uint32_t biClrImportant; /**< carried, never read */
} DibHeader;

/** Entries of the layer table of a document. */
#define ZQ_LAYER_TABLE_SIZE 101

/** One layer of a document, 300 bytes. Words called carried are copied and never read. */
typedef struct LayerEntry {
    DibHandle image; /**< the layer's pixels */
    DibHandle mask;  /**< 8-bit grey DIB of the size of `image`; 255 keeps a pixel, 0 hides it */
    uint32_t layerWord2;    /**< carried; a preview document sets it to 0 */
    int32_t left;           /**< x position of the layer on the canvas, in pixels */
    int32_t top;            /**< y position of the layer on the canvas, in pixels from its top */
    uint8_t carried20[260]; /**< carried */
    uint32_t layerWord70;   /**< carried; a preview document sets it to 1 */
    int32_t maskBypass;     /**< 1: effects leave the mask out of it */
    uint32_t carried288;    /**< carried */
    uint32_t layerWord73;   /**< carried; a preview document sets it to 100 */
    uint32_t layerWord74;   /**< carried; a preview document sets it to 0 */
} LayerEntry;

/** The host's record of a picture, 30,424 bytes in a block of its own. The host owns it and the
 * DIBs in it; a dialog only reads them. Words called carried are copied and never read. */
typedef struct ImageDocument {
    uint32_t carried0; /**< carried */
    int32_t width;     /**< canvas width in pixels */
    int32_t height;    /**< canvas height in pixels */
    int32_t bitDepth;  /**< 8 marks a grey document, for which dialogs offer no colour channels */
    uint8_t carried16[72];                  /**< carried */
    int32_t layerCount;                     /**< entries in use in `layers` */
    LayerEntry layers[ZQ_LAYER_TABLE_SIZE]; /**< the layers, unused entries behind them */
    int32_t currentLayer;                   /**< index of the layer that an effect works on */
    uint32_t carried30396;                  /**< carried */
    uint32_t documentWord7600;              /**< carried; a preview document sets it to 0 */
    int32_t selectionX0;                    /**< selection rectangle, first corner */
    int32_t selectionY0;                    /**< its y */
    int32_t selectionX1;                    /**< second corner; the corners come in either order */
    int32_t selectionY1;                    /**< its y */
    int32_t selectionActive;                /**< non-zero: the four words above hold a selection */
} ImageDocument;

/** @def ZQ_FORMAT_ASSERT
 *  Makes sure that a compiler lays the formats out as they are. */
#ifdef __cplusplus
#define ZQ_FORMAT_ASSERT(condition) static_assert(condition, #condition)
#else
#define ZQ_FORMAT_ASSERT(condition) _Static_assert(condition, #condition)
#endif

ZQ_FORMAT_ASSERT(offsetof(DibHeader, biSize) == 0);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biWidth) == 4);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biHeight) == 8);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biPlanes) == 12);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biBitCount) == 14);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biCompression) == 16);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biSizeImage) == 20);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biXPelsPerMeter) == 24);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biYPelsPerMeter) == 28);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biClrUsed) == 32);
ZQ_FORMAT_ASSERT(offsetof(DibHeader, biClrImportant) == 36);
ZQ_FORMAT_ASSERT(sizeof(DibHeader) == 40);

ZQ_FORMAT_ASSERT(offsetof(LayerEntry, image) == 0);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, mask) == 4);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, layerWord2) == 8);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, left) == 12);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, top) == 16);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, carried20) == 20);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, layerWord70) == 280);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, maskBypass) == 284);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, carried288) == 288);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, layerWord73) == 292);
ZQ_FORMAT_ASSERT(offsetof(LayerEntry, layerWord74) == 296);
ZQ_FORMAT_ASSERT(sizeof(LayerEntry) == 300);

ZQ_FORMAT_ASSERT(offsetof(ImageDocument, width) == 4);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, height) == 8);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, bitDepth) == 12);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, carried16) == 16);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, layerCount) == 88);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, layers) == 92);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, currentLayer) == 30392);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, carried30396) == 30396);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, documentWord7600) == 30400);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, selectionX0) == 30404);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, selectionY0) == 30408);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, selectionX1) == 30412);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, selectionY1) == 30416);
ZQ_FORMAT_ASSERT(offsetof(ImageDocument, selectionActive) == 30420);
ZQ_FORMAT_ASSERT(sizeof(ImageDocument) == 30424);

#endif

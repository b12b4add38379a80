/* The shortest complete host: asks for the parameters of effect 1, Brightness and Contrast, on a
 * picture that it makes itself, and prints the record that came back. */
#include <zq/memory.h>
#include <zq/zqui.h>

#include <stdio.h>

enum { kWidth = 256, kHeight = 192, kGreyEntries = 256 };

/* A picture is one moveable block: header, palette, rows from the bottom up, each padded to a
 * multiple of 4 bytes (the width above leaves no padding). */
static DibHandle NewPicture(uint16_t bits, uint32_t paletteEntries) {
    size_t pixels = (size_t)kWidth * kHeight * bits / 8;
    HGLOBAL block =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DibHeader) + 4 * paletteEntries + pixels);
    DibHeader* header = GlobalLock(block);
    if (header == NULL) {
        return 0;
    }
    *header = (DibHeader){.biSize = sizeof(DibHeader),
                          .biWidth = kWidth,
                          .biHeight = kHeight,
                          .biPlanes = 1,
                          .biBitCount = bits,
                          .biClrUsed = paletteEntries};
    uint8_t* bytes = (uint8_t*)(header + 1);
    for (uint32_t i = 0; i < paletteEntries; ++i, bytes += 4) {
        bytes[0] = bytes[1] = bytes[2] = (uint8_t)i; /* entry i is the grey level i */
    }
    for (size_t i = 0; i < pixels; ++i) {
        size_t x = i / 3 % kWidth, y = i / 3 / kWidth;
        /* The mask keeps every pixel whole; the picture is a gradient in blue, green and red. */
        bytes[i] = bits == 8 ? 255 : (uint8_t)(i % 3 == 0 ? x : i % 3 == 1 ? y : 255 - x);
    }
    GlobalUnlock(block);
    return ZqHandleOfBlock(block);
}

int main(void) {
    DibHandle image = NewPicture(24, 0);
    DibHandle mask = NewPicture(8, kGreyEntries);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(ImageDocument));
    ImageDocument* document = GlobalLock(block);
    if (image == 0 || mask == 0 || document == NULL) {
        fputs("minimal: not enough memory\n", stderr);
        return 1;
    }
    document->width = kWidth;
    document->height = kHeight;
    document->bitDepth = 24;
    document->layerCount = 1; /* currentLayer is 0, as the block came zero-filled */
    document->layers[0].image = image;
    document->layers[0].mask = mask;
    GlobalUnlock(block);

    /* The record is read only after the answer 1. A real host gives its window for the null. */
    BrightnessContrastParams record = {0, 0, 0};
    int32_t answer = GetZQParam(1, NULL, ZqHandleOfBlock(block), &record);
    if (answer == 1) {
        printf("channel %d, brightness %d, contrast %d\n", (int)record.channel,
               (int)record.brightness, (int)record.contrast);
    } else {
        puts(answer == 0 ? "cancelled" : "no such dialog");
    }

    GlobalFree(block);
    GlobalFree(ZqBlockOfHandle(mask));
    GlobalFree(ZqBlockOfHandle(image));
    return 0;
}

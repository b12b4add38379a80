#include "engine/block.h"
#include "rkdll/canvas.h"

#include <algorithm>

namespace {

// Only what is as long as a document is one.
const ImageDocument* DocumentIn(const BlockLock& lock, DocHandle document) {
    return lock && BlockSize(document) >= sizeof(ImageDocument)
               ? reinterpret_cast<const ImageDocument*>(lock.Bytes())
               : nullptr;
}

i32 UsedLayers(const ImageDocument& document) {
    return std::clamp(document.layerCount, 0, ZQ_LAYER_TABLE_SIZE);
}

// A 24-bit DIB with all pixels 0, or 0.
DibHandle MakeCanvasDib(i32 width, i32 height) {
    if (width < 1 || height < 1) {
        return 0;
    }
    const u64 pixels = RowStride(static_cast<u32>(width), 24) * static_cast<u64>(height);
    OwnedBlock block(AllocateBlock(kDibHeaderBytes + pixels));
    const BlockLock lock(block.Handle());
    if (!lock) {
        return 0;
    }
    auto& header = *reinterpret_cast<DibHeader*>(lock.Bytes());
    header.biSize = kDibHeaderBytes;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = 24;
    return block.HandOver();
}

} // namespace

DibHandle ZQ_CALL RkImageCropToDib(DocHandle document, int32_t layer, int32_t,
                                   const RkBackground* background) {
    const BlockLock documentLock(document);
    const ImageDocument* source = DocumentIn(documentLock, document);
    if (source == nullptr) {
        return 0;
    }
    OwnedBlock dib(MakeCanvasDib(source->width, source->height));
    const BlockLock dibLock(dib.Handle());
    if (!dibLock) {
        return 0;
    }
    const Canvas canvas{source->width, source->height, dibLock.Bytes() + kDibHeaderBytes,
                        static_cast<std::size_t>(RowStride(static_cast<u32>(source->width), 24))};
    PaintBackground(canvas, background == nullptr ? RkBackground{} : *background);
    for (i32 i = 0; i < UsedLayers(*source); ++i) {
        if (layer < 0 || layer == i) {
            BlendLayer(canvas, source->layers[i]);
        }
    }
    return dib.HandOver();
}

void ZQ_CALL RkImageDelete(DocHandle document) {
    BlockLock lock(document);
    const ImageDocument* locked = DocumentIn(lock, document);
    if (locked == nullptr) {
        return;
    }
    const ImageDocument doomed = *locked;
    lock.Release();
    for (i32 i = 0; i < UsedLayers(doomed); ++i) {
        FreeBlock(doomed.layers[i].image);
        FreeBlock(doomed.layers[i].mask);
    }
    FreeBlock(document);
}

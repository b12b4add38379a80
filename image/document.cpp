#include "image/document.h"

#include "engine/block.h"

namespace {

// Null for a lock on nothing or on a block too short for a document.
const ImageDocument* DocumentIn(const BlockLock& lock, DocHandle doc) {
    return lock && BlockSize(doc) >= sizeof(ImageDocument)
               ? reinterpret_cast<const ImageDocument*>(lock.Bytes())
               : nullptr;
}

bool IsLayerInUse(const ImageDocument& document, i32 index) {
    return index >= 0 && index < document.layerCount && index < ZQ_LAYER_TABLE_SIZE;
}

} // namespace

i32 GetCurrentLayer(DocHandle doc) {
    const BlockLock lock(doc);
    const ImageDocument* document = DocumentIn(lock, doc);
    return document == nullptr ? 0 : document->currentLayer;
}

LayerEntry* LockLayerEntry(DocHandle doc, i32 index) {
    const BlockLock lock(doc);
    const ImageDocument* document = DocumentIn(lock, doc);
    if (document == nullptr || !IsLayerInUse(*document, index)) {
        return nullptr;
    }
    // A second lock, which stays when this function's own goes.
    void* kept = GlobalLock(ZqBlockOfHandle(doc));
    return kept == nullptr ? nullptr : &static_cast<ImageDocument*>(kept)->layers[index];
}

void UnlockDocument(DocHandle doc) {
    if (doc != 0) {
        GlobalUnlock(ZqBlockOfHandle(doc));
    }
}

i32 IsGreyDocument(DocHandle doc) {
    const BlockLock lock(doc);
    const ImageDocument* document = DocumentIn(lock, doc);
    return document != nullptr && document->bitDepth == 8;
}

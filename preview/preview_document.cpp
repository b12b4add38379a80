#include "preview/preview_document.h"

#include "engine/block.h"
#include "image/crop_scale.h"
#include "image/dib.h"
#include "image/document.h"

#include <cstring>

namespace {

// The image and the mask of a document's current layer; 0 where there is none.
struct LayerDibs {
    DibHandle image = 0;
    DibHandle mask = 0;
};

LayerDibs CurrentLayerDibs(DocHandle document) {
    const LayerEntry* entry = LockLayerEntry(document, GetCurrentLayer(document));
    if (entry == nullptr) {
        return {};
    }
    const LayerDibs dibs{entry->image, entry->mask};
    UnlockDocument(document);
    return dibs;
}

OwnedBlock CropToPane(DibHandle source, const ViewRegion& region, Extent shown) {
    const Extent size = region.Size();
    return OwnedBlock(CropAndScaleDib(source, region.left, region.top, size.width, size.height,
                                      shown.width, shown.height));
}

// The words that make a copy of the host's record a document of one layer for a pane.
void ReduceToOneLayer(ImageDocument& copy, Extent pane, Extent shown, LayerDibs dibs) {
    copy.width = pane.width;
    copy.height = pane.height;
    copy.layerCount = 1;
    copy.currentLayer = 0;
    copy.documentWord7600 = 0;
    copy.selectionActive = 0;

    LayerEntry& entry = copy.layers[0];
    entry.image = dibs.image;
    entry.mask = dibs.mask;
    entry.layerWord2 = 0;
    entry.left = (pane.width - shown.width) / 2;
    entry.top = (pane.height - shown.height) / 2;
    entry.layerWord70 = 1;
    entry.layerWord73 = 100;
    entry.layerWord74 = 0;
}

} // namespace

bool CurrentImageSize(DocHandle document, Extent& size) {
    const DibHandle image = CurrentLayerDibs(document).image;
    return GetDibSize(image, &size.width, &size.height) != 0 && !size.IsEmpty();
}

DocHandle MakePreviewDocument(DocHandle document, const ViewRegion& region, i32 zoomPercent,
                              Extent pane) {
    if (pane.IsEmpty() || BlockSize(document) < sizeof(ImageDocument)) {
        return 0;
    }
    OwnedBlock preview(AllocateBlock(sizeof(ImageDocument)));
    const BlockLock previewLock(preview.Handle());
    const BlockLock hostLock(document);
    if (!previewLock || !hostLock) {
        return 0;
    }
    const LayerDibs layer = CurrentLayerDibs(document);
    const Extent shown = ShownSize(region, zoomPercent);
    OwnedBlock image = CropToPane(layer.image, region, shown);
    if (!image) {
        return 0;
    }
    OwnedBlock mask = CropToPane(layer.mask, region, shown);
    if (!mask) {
        return 0;
    }
    std::memcpy(previewLock.Bytes(), hostLock.Bytes(), sizeof(ImageDocument));
    ReduceToOneLayer(*reinterpret_cast<ImageDocument*>(previewLock.Bytes()), pane, shown,
                     {image.HandOver(), mask.HandOver()});
    return preview.HandOver();
}

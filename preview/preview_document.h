// The small document that a pane shows: a copy of the host's record with one layer, which is the
// visible region of the current layer at the pane's zoom.
#pragma once

#include "preview/view_region.h"
#include <zq/document.h>

// The size of the image of a document's current layer. False when there is none.
bool CurrentImageSize(DocHandle document, Extent& size);

// Gives a new document with a canvas of the pane's size and the region centred on it, which the
// caller frees with its DIBs; 0 when the current layer has no image or no mask, when either cannot
// be scaled, and without memory. `document` is only read.
DocHandle MakePreviewDocument(DocHandle document, const ViewRegion& region, i32 zoomPercent,
                              Extent pane);

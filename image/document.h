// Accessors on a document's handle. Each locks and unlocks for itself, LockLayerEntry excepted.
#pragma once

#include "platform/types.h"
#include <zq/document.h>

// The index of the layer that an effect works on; 0 when the document cannot be locked.
i32 GetCurrentLayer(DocHandle doc);

// Locks the document and gives the address of entry `index` if it is in use. Null, with nothing
// left locked, for an index that is negative or not below `layerCount` or the table's size, and for
// a block that is no document. After success the caller calls UnlockDocument.
LayerEntry* LockLayerEntry(DocHandle doc, i32 index);

// Ends one lock; a null handle is ignored.
void UnlockDocument(DocHandle doc);

// 1 if the document's depth is 8, else 0.
i32 IsGreyDocument(DocHandle doc);

// Documents made for tests.
#pragma once

#include "engine/block.h"
#include "engine/dib_format.h"

// A document as a host owns it. All carried words hold random values.
//
// Layer i has a random image of the canvas's size at left 0, top 0, and a random mask of that size;
// no selection, current layer 0. A grey `kind` makes a grey document. What the entries in use hold
// at the end is freed.
class TestDocument {
public:
    TestDocument(i32 width, i32 height, ImageClass kind = ImageClass::Colour, i32 layers = 1,
                 u32 seed = 1);
    ~TestDocument();

    DocHandle Handle() const { return block_.Handle(); }
    ImageDocument Read() const;
    LayerEntry Layer(i32 index) const;

    // Locks the document and hands it to `edit`.
    template <class Edit>
    void Change(Edit edit) {
        const BlockLock lock(Handle());
        edit(*reinterpret_cast<ImageDocument*>(lock.Bytes()));
    }

    // Replaces a DIB of a layer and frees the one before; 0 leaves the layer without.
    void SetImage(i32 index, OwnedBlock image);
    void SetMask(i32 index, OwnedBlock mask);

    TestDocument(const TestDocument&) = delete;
    TestDocument& operator=(const TestDocument&) = delete;

private:
    OwnedBlock block_;
};

#include "tests/support/document_maker.h"

#include "tests/support/dib_maker.h"

#include <cstring>
#include <random>

TestDocument::TestDocument(i32 width, i32 height, ImageClass kind, i32 layers, u32 seed) {
    std::mt19937 random(seed);
    std::vector<u8> bytes(sizeof(ImageDocument));
    for (u8& byte : bytes) {
        byte = static_cast<u8>(random());
    }
    block_ = MakeBlock(bytes);
    Change([&](ImageDocument& doc) {
        doc.width = width;
        doc.height = height;
        doc.bitDepth = kind == ImageClass::Grey ? 8 : 24;
        doc.layerCount = layers;
        doc.currentLayer = 0;
        doc.selectionActive = 0;
        for (i32 i = 0; i < layers; ++i) {
            LayerEntry& layer = doc.layers[i];
            const u32 layerSeed = static_cast<u32>(random());
            layer.image = MakeDib(kind, width, height, {.seed = layerSeed}).HandOver();
            layer.mask =
                MakeDib(ImageClass::Grey, width, height, {.seed = layerSeed + 1}).HandOver();
            layer.left = 0;
            layer.top = 0;
            layer.maskBypass = 0;
        }
    });
}

TestDocument::~TestDocument() {
    Change([](ImageDocument& doc) {
        for (i32 i = 0; i < doc.layerCount && i < ZQ_LAYER_TABLE_SIZE; ++i) {
            FreeBlock(doc.layers[i].image);
            FreeBlock(doc.layers[i].mask);
        }
    });
}

ImageDocument TestDocument::Read() const {
    ImageDocument doc;
    const BlockLock lock(Handle());
    std::memcpy(&doc, lock.Bytes(), sizeof doc);
    return doc;
}

LayerEntry TestDocument::Layer(i32 index) const {
    return Read().layers[index];
}

void TestDocument::SetImage(i32 index, OwnedBlock image) {
    Change([&](ImageDocument& doc) {
        FreeBlock(std::exchange(doc.layers[index].image, image.HandOver()));
    });
}

void TestDocument::SetMask(i32 index, OwnedBlock mask) {
    Change([&](ImageDocument& doc) {
        FreeBlock(std::exchange(doc.layers[index].mask, mask.HandOver()));
    });
}

#include "tests/preview/fake_rkdll.h"

#include "tests/support/dib_maker.h"

FakeRkdll fakeRkdll;

DibHandle RkImageCropToDib(DocHandle document, i32 layer, i32 zero,
                           const RkBackground* background) {
    ++fakeRkdll.renders;
    fakeRkdll.document = document;
    fakeRkdll.layer = layer;
    fakeRkdll.zero = zero;
    fakeRkdll.background = *background;
    const Extent size = fakeRkdll.renderedSize;
    return fakeRkdll.refuses ? 0
                             : MakeBlankDib(ImageClass::Colour, size.width, size.height).HandOver();
}

i32 RkDibDisplay(HDC dc, const RECT* rectangle, DibHandle, i32, i32, i32) {
    ++fakeRkdll.displays;
    fakeRkdll.rectangle = *rectangle;
    FillRect(dc, rectangle, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    return 1;
}

void RkImageDelete(DocHandle document) {
    const OwnedBlock block(document);
    const BlockLock lock(document);
    const auto& record = *reinterpret_cast<const ImageDocument*>(lock.Bytes());
    for (i32 i = 0; i < record.layerCount; ++i) {
        FreeBlock(record.layers[i].image);
        FreeBlock(record.layers[i].mask);
    }
}

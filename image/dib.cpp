#include "image/dib.h"

#include "engine/block.h"
#include "engine/dib_format.h"

namespace {

ImageClass ClassOf(DibHandle dib) {
    const BlockLock lock(dib);
    return ClassifyDibBytes(lock.Bytes(), BlockSize(dib));
}

} // namespace

i32 IsGreyPaletteDib(DibHandle dib) {
    return ClassOf(dib) == ImageClass::Grey;
}

i32 GetDibSize(DibHandle dib, i32* width, i32* height) {
    const BlockLock lock(dib);
    if (!lock || BlockSize(dib) < kDibHeaderBytes) {
        return 0;
    }
    const auto& header = *reinterpret_cast<const DibHeader*>(lock.Bytes());
    if (width != nullptr) {
        *width = header.biWidth;
    }
    if (height != nullptr) {
        *height = header.biHeight;
    }
    return 1;
}

i32 ClassifyDib(DibHandle dib) {
    return static_cast<i32>(ClassOf(dib));
}

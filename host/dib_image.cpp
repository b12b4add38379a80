#include "host/dib_image.h"

#include "pictures/dib_rows.h"

#include <algorithm>
#include <vector>

namespace {

bool ViewOf(DibHandle dib, const BlockLock& lock, DibView& view) {
    return lock && ViewDib(lock.Bytes(), BlockSize(dib), view);
}

bool HidesSomething(const DibView& mask) {
    for (i32 y = 0; y < mask.height; ++y) {
        const u8* row = mask.Row(y);
        if (std::any_of(row, row + mask.width, [](u8 value) { return value != 255; })) {
            return true;
        }
    }
    return false;
}

} // namespace

QImage ImageOfDib(DibHandle dib, DibHandle mask) {
    const BlockLock lock(dib);
    const BlockLock maskLock(mask);
    DibView view;
    DibView maskView;
    if (!ViewOf(dib, lock, view)) {
        return {};
    }
    const bool masked = ViewOf(mask, maskLock, maskView) && maskView.bits == 8 &&
                        maskView.width == view.width && maskView.height == view.height &&
                        HidesSomething(maskView);
    QImage image(view.width, view.height, masked ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull()) {
        return image;
    }
    const auto width = static_cast<std::size_t>(view.width);
    std::vector<u8> bgr(width * 3);
    for (i32 y = 0; y < view.height; ++y) {
        ReadRowAsBgr(view, y, bgr.data());
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(view.height - 1 - y));
        for (std::size_t x = 0; x < width; ++x) {
            const u8* colour = bgr.data() + x * 3;
            pixels[x] = qRgba(colour[2], colour[1], colour[0], masked ? maskView.Row(y)[x] : 255);
        }
    }
    return image;
}

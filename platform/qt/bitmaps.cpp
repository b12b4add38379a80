#include "platform/base/resource_file.h"
#include "platform/qt/device_context.h"
#include "platform/qt/drawing_objects.h"
#include "platform/types.h"

#include <cstring>

extern "C" {

HBITMAP LoadBitmapA(HINSTANCE instance, LPCSTR name) {
    const auto id = reinterpret_cast<std::uintptr_t>(name);
    const auto image = id > 0xFFFF ? std::nullopt : LoadBitmapImage(instance, static_cast<u16>(id));
    if (!image) {
        return nullptr;
    }
    auto picture = std::make_shared<QImage>(image->width, image->height, kSurfaceFormat);
    for (int y = 0; y < image->height; ++y) {
        const auto width = static_cast<std::size_t>(image->width);
        std::memcpy(picture->scanLine(y), &image->rgb[static_cast<std::size_t>(y) * width],
                    width * sizeof(u32));
    }
    return AddDrawingObject({DrawingObjectKind::Bitmap, 0, {}, false, std::move(picture)});
}

BOOL BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
            DWORD operation) {
    const DeviceContext* from = FindDeviceContext(source);
    if (from == nullptr || source == dc || (operation != SRCCOPY && operation != NOTSRCCOPY)) {
        return FALSE;
    }
    QPainter* painter = PainterOf(dc);
    if (painter == nullptr) {
        return FALSE;
    }
    const QRect wanted(sourceX, sourceY, width, height);
    const QRect copied = wanted & from->surface->rect();
    if (copied.isEmpty()) {
        return TRUE;
    }
    QImage part = from->surface->copy(copied);
    if (operation == NOTSRCCOPY) {
        part.invertPixels(QImage::InvertRgb);
    }
    painter->drawImage(QPoint(x, y) + copied.topLeft() - wanted.topLeft(), part);
    return TRUE;
}

} // extern "C"

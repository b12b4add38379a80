#include "platform/qt/device_context.h"

#include "platform/qt/drawing_objects.h"
#include "platform/qt/graphics_testing.h"
#include "platform/qt/handle_table.h"

#include <memory>

namespace {

HandleTable<std::unique_ptr<DeviceContext>>& Contexts() {
    static auto* contexts = new HandleTable<std::unique_ptr<DeviceContext>>;
    return *contexts;
}

void SelectPicture(DeviceContext& context, const DrawingObject& bitmap) {
    if (context.painter.isActive()) {
        context.painter.end();
    }
    context.inMemory = bitmap.picture;
    context.surface = context.inMemory.get();
    context.clip = QRegion(context.surface->rect());
}

HGDIOBJ& SelectedOfKind(DeviceContext& context, DrawingObjectKind kind) {
    switch (kind) {
    case DrawingObjectKind::Font:
        return context.font;
    case DrawingObjectKind::Pen:
        return context.pen;
    case DrawingObjectKind::Bitmap:
        return context.bitmap;
    default:
        return context.brush;
    }
}

} // namespace

HDC OpenDeviceContext(QImage& surface, const QRegion& clip) {
    auto context = std::make_unique<DeviceContext>();
    context->surface = &surface;
    context->clip = clip;
    context->font = GetStockObject(SYSTEM_FONT);
    context->brush = GetStockObject(WHITE_BRUSH);
    context->pen = GetStockObject(BLACK_PEN);
    context->backgroundMode = OPAQUE;
    return reinterpret_cast<HDC>(Contexts().Add(std::move(context)));
}

void CloseDeviceContext(HDC dc) {
    Contexts().Remove(reinterpret_cast<std::uintptr_t>(dc));
}

std::size_t LiveDeviceContextCount() {
    return Contexts().Count();
}

// Draws on a picture of one pixel until a bitmap is selected.
HDC CreateCompatibleDC(HDC dc) {
    static const HGDIOBJ onePixel = AddDrawingObject(
        {DrawingObjectKind::Bitmap, 0, {}, true, std::make_shared<QImage>(1, 1, kSurfaceFormat)});
    if (dc != nullptr && FindDeviceContext(dc) == nullptr) {
        return nullptr;
    }
    const DrawingObject& bitmap = *FindDrawingObject(onePixel);
    const HDC memory = OpenDeviceContext(*bitmap.picture, QRegion());
    if (DeviceContext* context = FindDeviceContext(memory)) {
        context->bitmap = onePixel;
        SelectPicture(*context, bitmap);
    }
    return memory;
}

BOOL DeleteDC(HDC dc) {
    const DeviceContext* context = FindDeviceContext(dc);
    if (context == nullptr || context->inMemory == nullptr) {
        return FALSE;
    }
    CloseDeviceContext(dc);
    return TRUE;
}

DeviceContext* FindDeviceContext(HDC dc) {
    const auto* found = Contexts().Find(reinterpret_cast<std::uintptr_t>(dc));
    return found == nullptr ? nullptr : found->get();
}

QPainter* PainterOf(HDC dc) {
    DeviceContext* context = FindDeviceContext(dc);
    if (context == nullptr) {
        return nullptr;
    }
    if (!context->painter.isActive()) {
        if (context->surface->isNull() || !context->painter.begin(context->surface)) {
            return nullptr;
        }
        context->painter.setClipRegion(context->clip);
    }
    return &context->painter;
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) {
    DeviceContext* context = FindDeviceContext(dc);
    const DrawingObject* found = FindDrawingObject(object);
    if (context == nullptr || found == nullptr) {
        return nullptr;
    }
    if (found->kind == DrawingObjectKind::Bitmap) {
        if (context->inMemory == nullptr) {
            return nullptr;
        }
        SelectPicture(*context, *found);
    }
    return std::exchange(SelectedOfKind(*context, found->kind), object);
}

int SetBkMode(HDC dc, int mode) {
    DeviceContext* context = FindDeviceContext(dc);
    if (context == nullptr || (mode != TRANSPARENT && mode != OPAQUE)) {
        return 0;
    }
    return std::exchange(context->backgroundMode, mode);
}

COLORREF SetTextColor(HDC dc, COLORREF color) {
    DeviceContext* context = FindDeviceContext(dc);
    return context == nullptr ? CLR_INVALID : std::exchange(context->textColor, color);
}

UINT SetTextAlign(HDC dc, UINT align) {
    DeviceContext* context = FindDeviceContext(dc);
    return context == nullptr ? GDI_ERROR : std::exchange(context->textAlign, align);
}

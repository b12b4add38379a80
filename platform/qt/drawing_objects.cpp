#include "platform/qt/drawing_objects.h"

#include "platform/qt/graphics_testing.h"
#include "platform/qt/handle_table.h"

#include <cstring>

namespace {

// Never destroyed: windows of the process's last moments may still draw.
HandleTable<DrawingObject>& Objects() {
    static auto* objects = new HandleTable<DrawingObject>;
    return *objects;
}

std::size_t permanentObjects = 0;

LOGFONTA SansSerif(LONG height, LONG weight) {
    LOGFONTA font{};
    font.lfHeight = height;
    font.lfWeight = weight;
    std::strcpy(font.lfFaceName, "MS Sans Serif");
    return font;
}

HGDIOBJ AddBrush(COLORREF color) {
    return AddDrawingObject({DrawingObjectKind::Brush, color, {}, true});
}

HGDIOBJ AddFont(const LOGFONTA& font) {
    return AddDrawingObject({DrawingObjectKind::Font, 0, font, true});
}

struct StockObjects {
    HGDIOBJ white = AddBrush(0xFFFFFF);
    HGDIOBJ lightGrey = AddBrush(0xC0C0C0);
    HGDIOBJ grey = AddBrush(0x808080);
    HGDIOBJ black = AddBrush(0);
    HGDIOBJ blackPen = AddDrawingObject({DrawingObjectKind::Pen, 0, {}, true});
    HGDIOBJ systemFont = AddFont(SansSerif(-13, 700));
    HGDIOBJ guiFont = AddFont(SansSerif(-11, 400));
};

} // namespace

HGDIOBJ AddDrawingObject(const DrawingObject& object) {
    const auto handle = reinterpret_cast<HGDIOBJ>(Objects().Add(object));
    permanentObjects += handle != nullptr && object.isPermanent ? 1 : 0;
    return handle;
}

const DrawingObject* FindDrawingObject(HGDIOBJ handle) {
    return Objects().Find(reinterpret_cast<std::uintptr_t>(handle));
}

std::size_t LiveGdiObjectCount() {
    return Objects().Count() - permanentObjects;
}

HGDIOBJ GetStockObject(int index) {
    static const StockObjects stock;
    switch (index) {
    case WHITE_BRUSH:
        return stock.white;
    case LTGRAY_BRUSH:
        return stock.lightGrey;
    case GRAY_BRUSH:
        return stock.grey;
    case BLACK_BRUSH:
        return stock.black;
    case BLACK_PEN:
        return stock.blackPen;
    case SYSTEM_FONT:
        return stock.systemFont;
    case DEFAULT_GUI_FONT:
        return stock.guiFont;
    default:
        return nullptr;
    }
}

HBRUSH CreateSolidBrush(COLORREF color) {
    return AddDrawingObject({DrawingObjectKind::Brush, color, {}, false});
}

HFONT CreateFontIndirectA(const LOGFONTA* description) {
    if (description == nullptr) {
        return nullptr;
    }
    return AddDrawingObject({DrawingObjectKind::Font, 0, *description, false});
}

HPEN CreatePen(int style, int width, COLORREF color) {
    if (style != PS_SOLID || width > 1) {
        return nullptr;
    }
    return AddDrawingObject({DrawingObjectKind::Pen, color, {}, false});
}

BOOL DeleteObject(HGDIOBJ object) {
    const DrawingObject* found = FindDrawingObject(object);
    if (found == nullptr) {
        return FALSE;
    }
    if (!found->isPermanent) {
        Objects().Remove(reinterpret_cast<std::uintptr_t>(object));
    }
    return TRUE;
}

#include "platform/qt/device_context.h"
#include "platform/qt/drawing_objects.h"

#include <array>

namespace {

// By the system's numbers.
constexpr std::array<QRgb, 25> kSystemColors = {
    0xC0C0C0, // scroll bar
    0x008080, // desktop
    0x000080, // active caption
    0x808080, // inactive caption
    0xC0C0C0, // menu
    0xFFFFFF, // window
    0x000000, // window frame
    0x000000, // menu text
    0x000000, // window text
    0xFFFFFF, // caption text
    0xC0C0C0, // active border
    0xC0C0C0, // inactive border
    0x808080, // workspace
    0x000080, // highlight
    0xFFFFFF, // highlighted text
    0xC0C0C0, // button face
    0x808080, // button shadow
    0x808080, // grey text
    0x000000, // button text
    0xC0C0C0, // inactive caption text
    0xFFFFFF, // button highlight
    0x000000, // dark shadow
    0xDFDFDF, // light edge
    0x000000, // tool tip text
    0xFFFFE1, // tool tip
};
constexpr std::uintptr_t kSystemColorBrushes = 256;

} // namespace

QColor SystemColor(int index) {
    const auto number = static_cast<std::size_t>(index);
    return index >= 0 && number < kSystemColors.size() ? QColor(kSystemColors[number]) : QColor();
}

DWORD GetSysColor(int index) {
    const QColor color = SystemColor(index);
    return !color.isValid()
               ? 0
               : static_cast<DWORD>(color.red() | color.green() << 8 | color.blue() << 16);
}

QColor BrushColor(HBRUSH brush) {
    const auto value = reinterpret_cast<std::uintptr_t>(brush);
    if (value < kSystemColorBrushes) {
        return SystemColor(static_cast<int>(value) - 1);
    }
    const DrawingObject* object = FindDrawingObject(brush);
    if (object == nullptr || object->kind != DrawingObjectKind::Brush) {
        return {};
    }
    return ToQColor(object->color);
}

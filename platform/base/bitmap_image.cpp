#include "platform/base/resource_dib.h"
#include "platform/base/resource_file.h"

std::optional<BitmapImage> LoadBitmapImage(HINSTANCE module, u16 id) {
    ByteReader reader(FindResourceBytes(module, kResourceBitmap, id));
    const auto dib = ReadResourceDib(reader, 1);
    if (!dib) {
        return std::nullopt;
    }
    BitmapImage image{dib->width, dib->height, {}};
    for (auto y = static_cast<std::size_t>(dib->height); y-- > 0;) {
        for (std::size_t x = 0; x < static_cast<std::size_t>(dib->width); ++x) {
            image.rgb.push_back(ColourAt(*dib, x, y) & 0xFFFFFF);
        }
    }
    return image;
}

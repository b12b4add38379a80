#include "platform/qt/device_context.h"
#include "platform/types.h"

#include <vector>

namespace {

// Rows of an uncompressed DIB, bottom row first, and its colours.
struct SourceDib {
    const u8* bits;
    const RGBQUAD* palette;
    std::size_t colors;
    std::size_t stride;
    int width, height;
    unsigned depth;
};

bool DescribeDib(const void* bits, const BITMAPINFO& info, SourceDib& dib) {
    const BITMAPINFOHEADER& header = info.bmiHeader;
    const unsigned depth = header.biBitCount;
    if (header.biSize != sizeof(BITMAPINFOHEADER) || header.biCompression != 0 ||
        header.biWidth < 1 || header.biHeight < 1 ||
        (depth != 24 && depth != 8 && depth != 4 && depth != 1)) {
        return false;
    }
    const std::size_t most = depth == 24 ? 0 : std::size_t{1} << depth;
    const bool whole = header.biClrUsed == 0 || header.biClrUsed > most;
    dib = {static_cast<const u8*>(bits),
           info.bmiColors,
           whole ? most : header.biClrUsed,
           (static_cast<std::size_t>(header.biWidth) * depth + 31) / 32 * 4,
           header.biWidth,
           header.biHeight,
           depth};
    return true;
}

QRgb PixelAt(const SourceDib& dib, const u8* row, std::size_t x) {
    if (dib.depth == 24) {
        const u8* pixel = row + 3 * x;
        return qRgb(pixel[2], pixel[1], pixel[0]);
    }
    const std::size_t bit = x * dib.depth;
    const std::size_t index = row[bit / 8] >> (8 - dib.depth - bit % 8) & ((1u << dib.depth) - 1);
    if (index >= dib.colors) {
        return qRgb(0, 0, 0);
    }
    const RGBQUAD& color = dib.palette[index];
    return qRgb(color.rgbRed, color.rgbGreen, color.rgbBlue);
}

// The place in `source` places that the middle of `place` of `target` falls on.
int Nearest(int place, int target, int source) {
    return static_cast<int>((2 * i64{place} + 1) * source / (2 * i64{target}));
}

} // namespace

int StretchDIBits(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY,
                  int sourceWidth, int sourceHeight, const void* bits, const BITMAPINFO* info,
                  UINT usage, DWORD operation) {
    QPainter* painter = PainterOf(dc);
    SourceDib dib;
    if (painter == nullptr || bits == nullptr || info == nullptr || usage != DIB_RGB_COLORS ||
        operation != SRCCOPY || !DescribeDib(bits, *info, dib) || width < 1 || height < 1 ||
        sourceWidth < 1 || sourceHeight < 1 || sourceX < 0 || sourceY < 0 ||
        sourceX > dib.width - sourceWidth || sourceY > dib.height - sourceHeight) {
        return 0;
    }
    const DeviceContext& context = *FindDeviceContext(dc);
    const QRect target(x, y, width, height);
    const QRect visible = target & context.clip.boundingRect() & context.surface->rect();
    if (visible.isEmpty()) {
        return sourceHeight;
    }
    std::vector<std::size_t> columns;
    for (int column = visible.left(); column <= visible.right(); ++column) {
        columns.push_back(
            static_cast<std::size_t>(sourceX + Nearest(column - x, width, sourceWidth)));
    }
    QImage picture(visible.size(), QImage::Format_RGB32);
    if (picture.isNull()) {
        return 0;
    }
    for (int line = 0; line < visible.height(); ++line) {
        const int down = Nearest(visible.top() + line - y, height, sourceHeight);
        const u8* row =
            dib.bits + dib.stride * static_cast<std::size_t>(sourceY + sourceHeight - 1 - down);
        auto* out = reinterpret_cast<QRgb*>(picture.scanLine(line));
        for (const std::size_t column : columns) {
            *out++ = PixelAt(dib, row, column);
        }
    }
    painter->drawImage(visible.topLeft(), picture);
    return sourceHeight;
}

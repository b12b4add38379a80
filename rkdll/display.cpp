#include "engine/block.h"
#include "engine/dib_format.h"
#include "rkdll/rkdll.h"

#include <algorithm>
#include <cstring>

namespace {

// A header and a palette that say what the platform needs to know: a full palette, in which
// entries that the DIB lacks are black, and no word of the header that is only carried.
struct DisplayInfo {
    BITMAPINFOHEADER header;
    RGBQUAD palette[256];
};

DisplayInfo DescribeForDisplay(const DibView& view) {
    DisplayInfo info{};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = view.width;
    info.header.biHeight = view.height;
    info.header.biPlanes = 1;
    info.header.biBitCount = static_cast<WORD>(view.bits);
    const std::size_t entries = std::min<std::size_t>(view.paletteEntries, 256);
    std::memcpy(info.palette, view.Palette(), entries * kPaletteEntryBytes);
    return info;
}

} // namespace

int32_t ZQ_CALL RkDibDisplay(HDC dc, const RECT* rectangle, DibHandle dib, int32_t, int32_t,
                             int32_t) {
    const BlockLock lock(dib);
    DibView view;
    if (rectangle == nullptr || !lock || !ViewDib(lock.Bytes(), BlockSize(dib), view)) {
        return 0;
    }
    const DisplayInfo info = DescribeForDisplay(view);
    const int lines = StretchDIBits(
        dc, rectangle->left, rectangle->top, rectangle->right - rectangle->left,
        rectangle->bottom - rectangle->top, 0, 0, view.width, view.height, view.Row(0),
        reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, SRCCOPY);
    return lines > 0 ? 1 : 0;
}

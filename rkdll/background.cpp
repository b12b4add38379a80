#include "rkdll/canvas.h"

namespace {

constexpr i32 kSquare = 8;
constexpr u32 kLightGrey = 0xFFFFFF;
constexpr u32 kDarkGrey = 0xCCCCCC;

struct Colors {
    u32 first, second; // 0x00BBGGRR
};

Colors ColorsOf(const RkBackground& background) {
    switch (background.word0) {
    case 1:
        return {background.word1, background.word1};
    case 2:
        return {background.word1, background.word2};
    default:
        return {kLightGrey, kDarkGrey};
    }
}

} // namespace

// The canvas's top left square has the first colour.
void PaintBackground(const Canvas& canvas, const RkBackground& background) {
    const Colors colors = ColorsOf(background);
    for (i32 y = 0; y < canvas.height; ++y) {
        const i32 down = (canvas.height - 1 - y) / kSquare;
        u8* pixel = canvas.Row(y);
        for (i32 x = 0; x < canvas.width; ++x, pixel += 3) {
            const u32 color = (x / kSquare + down) % 2 == 0 ? colors.first : colors.second;
            pixel[0] = static_cast<u8>(color >> 16);
            pixel[1] = static_cast<u8>(color >> 8);
            pixel[2] = static_cast<u8>(color);
        }
    }
}

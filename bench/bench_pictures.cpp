#include "bench/bench_pictures.h"

#include "engine/dib_format.h"
#include "pictures/dib_rows.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

struct Photograph {
    OwnedBlock dib;
    BlockLock lock;
    DibView view;
};

bool ReadPhotograph(Photograph& photograph) {
    DibHandle dib = 0;
    if (ReadPicture(ZQ_SAMPLES "/coffee.png", dib) != PictureResult::Ok) {
        return false;
    }
    photograph.dib = OwnedBlock(dib);
    photograph.lock = BlockLock(dib);
    return photograph.lock && ViewDib(photograph.lock.Bytes(), BlockSize(dib), photograph.view) &&
           photograph.view.bits == 24;
}

// 0..size - 1, then back again, and so on.
i32 Mirrored(i32 position, i32 size) {
    const i32 folded = position % (2 * size);
    return folded < size ? folded : 2 * size - 1 - folded;
}

// Between 0.7 and 1.3, in waves of several hundred pixels.
double Light(i32 x, i32 y) {
    return 1.0 + 0.15 * std::sin(x * 0.0113 + y * 0.0041) +
           0.15 * std::cos(y * 0.0097 - x * 0.0023);
}

} // namespace

OwnedBlock MakeBenchPicture(i32 width, i32 height, bool grey) {
    Photograph photograph;
    OwnedBlock picture;
    if (!ReadPhotograph(photograph) ||
        (grey ? NewGreyDib(width, height, picture) : NewDib(width, height, 24, 0, picture)) !=
            PictureResult::Ok) {
        return {};
    }
    const BlockLock lock(picture.Handle());
    DibView view;
    if (!lock || !ViewDib(lock.Bytes(), BlockSize(picture.Handle()), view)) {
        return {};
    }
    for (i32 y = 0; y < height; ++y) {
        const u8* from = photograph.view.Row(Mirrored(y, photograph.view.height));
        u8* to = lock.Bytes() + view.head + static_cast<std::size_t>(y) * view.stride;
        for (i32 x = 0; x < width; ++x) {
            const u8* bgr = from + 3 * static_cast<std::size_t>(Mirrored(x, photograph.view.width));
            const double light = Light(x, y);
            const auto lit = [&](double tone) {
                return static_cast<u8>(std::clamp(tone * light, 0.0, 255.0));
            };
            if (grey) {
                *to++ = lit(0.114 * bgr[0] + 0.587 * bgr[1] + 0.299 * bgr[2]);
            } else {
                to = std::transform(bgr, bgr + 3, to, lit);
            }
        }
    }
    return picture;
}

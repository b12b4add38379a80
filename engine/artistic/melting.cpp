// Lets random pixels sink through brighter ones.
#include "engine/artistic/artistic_kernels.h"
#include "engine/pixel.h"

namespace {

template <std::size_t bytes>
i32 Tone(const u8* pixel) {
    return bytes == 1 ? pixel[0] : pixel[0] + pixel[1] + pixel[2];
}

// The pixel at row y of a column falls as long as the one below is at least as bright; those that
// it passes rise by one. It never reaches row 0.
template <std::size_t bytes>
void Sink(u8* pixel, std::size_t stride, i32 y) {
    u8 sinking[bytes];
    CopyPixel<bytes>(pixel, sinking);
    const i32 tone = Tone<bytes>(sinking);
    for (; y >= 2 && tone <= Tone<bytes>(pixel - stride); --y, pixel -= stride) {
        CopyPixel<bytes>(pixel - stride, pixel);
    }
    CopyPixel<bytes>(sinking, pixel);
}

// Reports come in bursts of four, at the pixels whose number has none of these bits.
constexpr i64 kQuietPixels = 0x4FF;

} // namespace

DibHandle Melting(DibHandle source, i32 intensity) {
    if (intensity < 1 || intensity > 100) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        run.CopyHead();
        const DibView& picture = run.source;
        const i64 count = i64{picture.width} * picture.height / 100 * intensity;
        for (i32 y = 0; y < picture.height; ++y) {
            std::memcpy(run.ResultRow(y), picture.Row(y), picture.stride);
        }
        return WithPixelBytes(picture, [&](auto bytes) {
            for (i64 i = 0; i < count; ++i) {
                if (!run.GoOn()) {
                    return WorkEnd::Stopped;
                }
                if ((i & kQuietPixels) == 0) {
                    ReportProgress(static_cast<i32>(i * 100 / count));
                }
                const i32 x = EngineRandom() % picture.width;
                const i32 y = EngineRandom() % picture.height;
                Sink<bytes>(run.ResultRow(y) + static_cast<std::size_t>(x) * bytes, picture.stride,
                            y);
            }
            return WorkEnd::Done;
        });
    });
}

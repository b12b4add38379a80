// Lets random pixels sink through brighter ones.
//
// A pixel sinks in its column, so the picture is worked on column by column in memory: what a pixel
// passes then lies together.
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
void Sink(u8* pixel, i32 y) {
    u8 sinking[bytes];
    CopyPixel<bytes>(pixel, sinking);
    const i32 tone = Tone<bytes>(sinking);
    for (; y >= 2 && tone <= Tone<bytes>(pixel - bytes); --y, pixel -= bytes) {
        CopyPixel<bytes>(pixel - bytes, pixel);
    }
    CopyPixel<bytes>(sinking, pixel);
}

// Calls `visit` with every pixel of a picture, in small squares, so that both a row's pixels and a
// column's are still at hand when their neighbours come.
template <class Visit>
void ForEachInSquares(const DibView& picture, const Visit& visit) {
    constexpr i32 kSide = 32;
    for (i32 left = 0; left < picture.width; left += kSide) {
        const i32 right = std::min(picture.width, left + kSide);
        for (i32 bottom = 0; bottom < picture.height; bottom += kSide) {
            const i32 top = std::min(picture.height, bottom + kSide);
            for (i32 x = left; x < right; ++x) {
                for (i32 y = bottom; y < top; ++y) {
                    visit(static_cast<std::size_t>(x), y);
                }
            }
        }
    }
}

// Reports come in bursts of four, at the pixels whose number has none of these bits.
constexpr i64 kQuietPixels = 0x4FF;

// Pixels that have been drawn and still wait, so that memory has brought them when they sink.
constexpr i64 kWaiting = 32;

template <std::size_t bytes>
WorkEnd Melt(const KernelRun& run, u8* columns, i64 count) {
    struct Drawn {
        u8* pixel;
        i32 y;
    };
    Drawn waiting[kWaiting];
    const auto height = static_cast<std::size_t>(run.source.height);
    for (i64 i = 0; i < count; ++i) {
        if (!run.GoOn()) {
            return WorkEnd::Stopped;
        }
        if ((i & kQuietPixels) == 0) {
            ReportProgress(static_cast<i32>(i * 100 / count));
        }
        const auto x = static_cast<std::size_t>(EngineRandom() % run.source.width);
        const i32 y = EngineRandom() % run.source.height;
        Drawn& next = waiting[i % kWaiting];
        if (i >= kWaiting) {
            Sink<bytes>(next.pixel, next.y);
        }
        next = {columns + (x * height + static_cast<std::size_t>(y)) * bytes, y};
        __builtin_prefetch(next.pixel, 1);
    }
    for (i64 i = std::max<i64>(0, count - kWaiting); i < count; ++i) {
        Sink<bytes>(waiting[i % kWaiting].pixel, waiting[i % kWaiting].y);
    }
    return WorkEnd::Done;
}

template <std::size_t bytes>
WorkEnd MeltPicture(const KernelRun& run, u8* columns, i64 count) {
    const DibView& picture = run.source;
    const auto inColumns = [&](std::size_t x, i32 y) {
        return columns +
               (x * static_cast<std::size_t>(picture.height) + static_cast<std::size_t>(y)) * bytes;
    };
    ForEachInSquares(picture, [&](std::size_t x, i32 y) {
        CopyPixel<bytes>(picture.Row(y) + x * bytes, inColumns(x, y));
    });
    const WorkEnd end = Melt<bytes>(run, columns, count);
    if (end == WorkEnd::Done) {
        ForEachInSquares(picture, [&](std::size_t x, i32 y) {
            CopyPixel<bytes>(inColumns(x, y), run.ResultRow(y) + x * bytes);
        });
        for (i32 y = 0; y < picture.height; ++y) {
            std::memcpy(run.ResultRow(y) + picture.rowBytes, picture.Row(y) + picture.rowBytes,
                        picture.stride - picture.rowBytes);
        }
    }
    return end;
}

} // namespace

DibHandle Melting(DibHandle source, i32 intensity) {
    if (intensity < 1 || intensity > 100) {
        return 0;
    }
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        const DibView& picture = run.source;
        const BlockTable<u8> columns(u64{picture.rowBytes} * static_cast<u64>(picture.height));
        if (!columns) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        const i64 count = i64{picture.width} * picture.height / 100 * intensity;
        return WithPixelBytes(
            picture, [&](auto bytes) { return MeltPicture<bytes>(run, columns.Entries(), count); });
    });
}

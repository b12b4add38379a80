// The frame of all kernels: everything that happens around the pixels.
//
// A kernel checks its parameters, builds its tables and calls RunKernel with its pixel work. The
// frame locks and checks the source, refuses depths that the kernel does not take, shows the busy
// cursor, makes the result, and afterwards unlocks, frees a stopped result, reports 100 percent and
// shows the arrow. It never shows the cursor that was there before: a caller that wants it back
// restores it.
#pragma once

#include "engine/block.h"
#include "engine/dib_format.h"
#include "engine/engine.h"

#include <type_traits>

// The depths that a kernel takes. All others give 0.
enum class Depths {
    PaletteAware,        // 24 bits, 8 bits, 4 bits; palettes are worked on instead of pixels
    PaletteAwareAndMono, // the same and 1 bit
    GreyOrColour,        // 24 bits and 8-bit grey
    AnyByteOrColour,     // 24 bits and 8 bits with any palette
    AnyByte,             // 8 bits with any palette
};

enum class BusyCursor { Shown, LeftAlone };

enum class WorkEnd {
    Done,
    DoneInSilence, // like Done, but 100 percent is not reported
    Stopped,       // ShouldAbort answered yes: the result is freed, 100 percent is still reported
    NoMemory,      // a working table could not be had: the result is freed, nothing is reported
};

// When a kernel asks whether to stop and reports how far it is.
enum class RowRhythm {
    EveryRow, // asks before each row, reports on every 16th
    Rare,     // asks and reports on every 32nd row, does neither on the others
};

// One run of a kernel: the source to read and the result to write.
class KernelRun {
public:
    KernelRun(const DibView& sourceView, u8* resultBlock)
        : source(sourceView), result_(resultBlock) {}

    const DibView source;

    u8* ResultPalette() const { return result_ + kDibHeaderBytes; }
    u8* ResultRow(i32 y) const {
        return result_ + source.head + static_cast<std::size_t>(y) * source.stride;
    }

    // Copies what stands in front of the pixels, then asks whether to stop and ignores the answer:
    // that question clears a press of Escape from before the run.
    void CopyHead() const;
    // The same for a kernel that never asks.
    void CopyHeadWithoutAsking() const;

    // False when the run is to stop.
    bool GoOn() const { return ShouldAbort() == 0; }

    // To be called before line `index` of `count`: asks, and on every `every`-th line reports
    // base + index * span / count percent. False when the run is to stop.
    bool BeginLine(i32 index, i32 count, i32 base = 0, i32 span = 100, i32 every = 16) const {
        if (!GoOn()) {
            return false;
        }
        if (index % every == 0) {
            ReportProgress(base + static_cast<i32>(static_cast<i64>(index) * span / count));
        }
        return true;
    }

    // The same before row `y`, as often as the rhythm says.
    bool BeginRow(i32 y, RowRhythm rhythm) const {
        if (rhythm == RowRhythm::EveryRow) {
            return BeginLine(y, source.height);
        }
        constexpr i32 kRowsPerQuestion = 32;
        return y % kRowsPerQuestion != 0 || BeginLine(y, source.height, 0, 100, kRowsPerQuestion);
    }

    // All rows from the bottom up, `row(from, to)` or `row(from, to, y)` writing one of them.
    template <class Row>
    WorkEnd ForEachRow(const Row& row, RowRhythm rhythm = RowRhythm::EveryRow) const {
        for (i32 y = 0; y < source.height; ++y) {
            if (!BeginRow(y, rhythm)) {
                return WorkEnd::Stopped;
            }
            if constexpr (std::is_invocable_v<Row, const u8*, u8*, i32>) {
                row(source.Row(y), ResultRow(y), y);
            } else {
                row(source.Row(y), ResultRow(y));
            }
        }
        return WorkEnd::Done;
    }

private:
    u8* const result_;
};

using KernelWork = WorkEnd (*)(const KernelRun& run, const void* closure);

DibHandle RunKernelWork(DibHandle source, Depths depths, BusyCursor cursor, KernelWork work,
                        const void* closure);

// Runs `work`, a callable that takes the run and gives a WorkEnd, inside the frame. Gives the new
// DIB or 0.
template <class Work>
DibHandle RunKernel(DibHandle source, Depths depths, const Work& work,
                    BusyCursor cursor = BusyCursor::Shown) {
    return RunKernelWork(
        source, depths, cursor,
        [](const KernelRun& run, const void* closure) {
            return (*static_cast<const Work*>(closure))(run);
        },
        &work);
}

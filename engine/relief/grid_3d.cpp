// Lays a grid over the picture whose cells look like raised tiles: the pixels one step in from each
// grid line are lightened or darkened. In the irregular shape the lines wander.
#include "engine/pixel.h"
#include "engine/relief/relief_kernels.h"
#include "engine/relief/wandering_cells.h"
#include "engine/vector/byte_rows.h"

namespace {

struct Cells {
    u32 mask; // a place in a cell, 0 to mask; places run on from cell to cell
    u8 bevel;

    bool IsGroove(u32 place) const { return (place & mask) == 0 || (place & mask) == mask; }
    bool IsFirst(u32 place) const { return (place & mask) == 1; }
    bool IsLast(u32 place) const { return (place & mask) == mask - 1; }
};

// Bytes along a row: `value` where the pixel's place in its cell is one of those asked for.
template <class IsChosen>
RowPattern PatternOf(std::size_t pixelBytes, u8 value, const IsChosen& isChosen) {
    return RowPattern(
        [&](std::size_t i) { return isChosen(static_cast<u32>(i / pixelBytes)) ? value : u8{0}; });
}

// The first row of a cell is dark and its last one light; in the others it is the first and the
// last pixel that are light and dark.
WorkEnd DrawRegular(const KernelRun& run, const Cells& cells) {
    const std::size_t pixel = PixelBytes(run.source);
    const Stores stores = StoresFor(run.source);
    const auto pattern = [&](const auto& isChosen) {
        return PatternOf(pixel, cells.bevel, isChosen);
    };
    const RowPattern none = pattern([](u32) { return false; });
    const RowPattern tile = pattern([&](u32 x) { return !cells.IsGroove(x); });
    const RowPattern left = pattern([&](u32 x) { return cells.IsFirst(x); });
    const RowPattern right = pattern([&](u32 x) { return cells.IsLast(x); });
    run.CopyHead();
    return run.ForEachRow([&](const u8* from, u8* to, i32 y) {
        const std::size_t bytes = run.source.rowBytes;
        const auto place = static_cast<u32>(y);
        if (cells.IsGroove(place)) {
            CopyBytes(from, to, bytes, stores);
        } else if (cells.IsFirst(place)) {
            AddPattern(from, to, bytes, none, tile, stores);
        } else if (cells.IsLast(place)) {
            AddPattern(from, to, bytes, tile, none, stores);
        } else {
            AddPattern(from, to, bytes, left, right, stores);
        }
    });
}

void RandomStep(i32& walk) {
    switch (EngineRandom() & 3) {
    case 1:
        ++walk;
        break;
    case 2:
        --walk;
        break;
    default:
        break;
    }
}

// Rows and columns change roles here, and with them the sides that the light falls on.
WorkEnd DrawIrregular(const KernelRun& run, const Cells& cells) {
    const std::size_t pixel = PixelBytes(run.source);
    const BlockTable<u8> columnDrift(run.source.rowBytes);
    if (!columnDrift) {
        return WorkEnd::NoMemory;
    }
    i32 walk = 0;
    for (std::size_t i = 0; i < run.source.rowBytes; i += pixel) {
        RandomStep(walk);
        std::memset(&columnDrift[i], static_cast<u8>(walk), pixel);
    }
    const WanderingCells wandering{
        .up = PatternOf(pixel, cells.bevel, [&](u32 place) { return cells.IsLast(place); }),
        .down = PatternOf(pixel, cells.bevel, [&](u32 place) { return cells.IsFirst(place); }),
        .inner = PatternOf(pixel, 255,
                           [&](u32 place) {
                               return !cells.IsGroove(place) && !cells.IsFirst(place) &&
                                      !cells.IsLast(place);
                           }),
        .bevel = cells.bevel,
        .cellMask = static_cast<u8>(cells.mask)};
    run.CopyHead();
    const Stores stores = StoresFor(run.source);
    i32 rowDrift = 0;
    return run.ForEachRow([&](const u8* from, u8* to, i32 y) {
        RandomStep(rowDrift);
        const std::size_t start = pixel * (static_cast<u32>(rowDrift) & cells.mask);
        AddWanderingCells(from, columnDrift.Entries(), to, run.source.rowBytes, wandering, start,
                          static_cast<u8>(y), stores);
    });
}

} // namespace

DibHandle Grid3D(DibHandle source, const Grid3DParams& params) {
    if (params.size < 1 || params.size > 3 || params.height < 0 || params.height > 2 ||
        params.shape < 0 || params.shape > 1) {
        return 0;
    }
    const Cells cells{.mask = params.size == 3 ? 63u : (params.size == 1 ? 31u : 15u),
                      .bevel = static_cast<u8>(92 - 32 * params.height)};
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        return params.shape == 0 ? DrawRegular(run, cells) : DrawIrregular(run, cells);
    });
}

// Medians of large windows by levels: the work does not grow with the window, and no branch depends
// on a sample.
//
// For each level of tone the samples above it are counted in all windows, as running sums down the
// columns and then along the rows. A window's rank-th sample is the number of levels that too many
// samples are above, and so is the next one. A tile is cut into as many strips as a vector has
// bytes, one for each, so that both sums run along whole vectors. Every 16th level is counted
// first: of the others each strip needs those next to its medians only.
#include "engine/neighbourhood/median_rows.h"

#include <cstdint>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "engine/neighbourhood/median_levels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "engine/neighbourhood/median_levels-inl.h"

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {
namespace {

Room& RoomAt(u8* bytes) {
    const std::size_t misplaced = reinterpret_cast<std::uintptr_t>(bytes) % alignof(Room);
    return *reinterpret_cast<Room*>(bytes + alignof(Room) - misplaced);
}

} // namespace

void LevelMedianTile(const DibView& source, i32 size, const Tile& tile, u8* bytes, u8* result) {
    const Strips strips(source, tile, size);
    Room& room = RoomAt(bytes);
    for (std::size_t channel = 0; channel < strips.channels; ++channel) {
        Gather(strips, channel, room);
        if (size <= ByteSum::kLargestSize) {
            FindMiddles<ByteSum>(strips, room);
        } else {
            FindMiddles<ShortSum>(strips, room);
        }
        for (i32 y = 0; y < strips.rows; ++y) {
            WalkRow(strips, y, channel, result, room);
            WriteRow(strips, y, channel, result, room);
        }
    }
}

i32 LevelTileRows() {
    return kBands * kStripRows;
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

HWY_EXPORT(LevelMedianTile);
HWY_EXPORT(LevelTileRows);

void LevelMedianTile(const DibView& source, i32 size, const Tile& tile, u8* room, u8* result) {
    HWY_DYNAMIC_DISPATCH(LevelMedianTile)(source, size, tile, room, result);
}

i32 LevelTileRows() {
    return HWY_DYNAMIC_DISPATCH(LevelTileRows)();
}

#endif

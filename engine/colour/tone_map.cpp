#include "engine/colour/tone_map.h"

#include "engine/vector/byte_rows.h"

namespace {

// Where in a pixel the only channel of a map stands.
std::size_t ByteOfPixel(i32 channel) {
    return channel == ZQ_CHANNEL_RED ? 2 : (channel == ZQ_CHANNEL_GREEN ? 1 : 0);
}

bool Changes(const ToneMap& map, std::size_t byteOfPixel) {
    return map.channel == ZQ_CHANNEL_RGB || byteOfPixel == ByteOfPixel(map.channel);
}

void MapPalette(const KernelRun& run, const ToneMap& map, bool clearReservedByte) {
    ForEachPaletteColour(run, [&](const u8* from, u8* to) {
        for (std::size_t i = 0; i < 3; ++i) {
            to[i] = Changes(map, i) ? map.table[from[i]] : from[i];
        }
        if (clearReservedByte) {
            to[3] = 0;
        }
    });
}

} // namespace

WorkEnd CopyRows(const KernelRun& run, RowRhythm rhythm) {
    const Stores stores = StoresFor(run.source);
    return run.ForEachRow(
        [&](const u8* from, u8* to) { CopyBytes(from, to, run.source.stride, stores); }, rhythm);
}

WorkEnd ApplyToneMap(const KernelRun& run, const ToneMap& map, const ToneMapHabits& habits) {
    run.CopyHead();
    const DibView& source = run.source;
    const Stores stores = StoresFor(source);
    const std::size_t count = habits.mapsPadding ? source.stride : source.rowBytes;
    const bool isColour = source.imageClass == ImageClass::Colour;
    if (!isColour && source.imageClass != ImageClass::Grey) {
        MapPalette(run, map, habits.clearsReservedByte);
        return CopyRows(run, habits.asksRarely ? RowRhythm::Rare : RowRhythm::EveryRow);
    }
    if (isColour && map.channel != ZQ_CHANNEL_RGB) {
        return run.ForEachRow([&](const u8* from, u8* to) {
            MapChannel(from, to, source.rowBytes, ByteOfPixel(map.channel), map.table, stores);
        });
    }
    if (!isColour && map.leavesGrey) {
        return run.ForEachRow(
            [&](const u8* from, u8* to) { CopyBytes(from, to, source.rowBytes, stores); });
    }
    return run.ForEachRow([&](const u8* from, u8* to) {
        MapBytes(from, to, isColour ? count : source.rowBytes, map.table, stores);
    });
}

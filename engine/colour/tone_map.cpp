#include "engine/colour/tone_map.h"

#include <cstring>

namespace {

void MapPalette(const KernelRun& run, const ToneMap& map, bool clearReservedByte) {
    ForEachPaletteColour(run, [&](const u8* from, u8* to) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            to[channel] = map.channels[channel][from[channel]];
        }
        if (clearReservedByte) {
            to[3] = 0;
        }
    });
}

} // namespace

ByteTable IdentityTable() {
    ByteTable table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<u8>(i);
    }
    return table;
}

ToneMap MapForChannel(i32 channel, const ByteTable& table) {
    ToneMap map;
    map.grey = table;
    if (channel == ZQ_CHANNEL_RGB) {
        map.channels.fill(table);
        return map;
    }
    map.channels.fill(IdentityTable());
    const std::size_t byteOfPixel =
        channel == ZQ_CHANNEL_RED ? 2 : (channel == ZQ_CHANNEL_GREEN ? 1 : 0);
    map.channels[byteOfPixel] = table;
    return map;
}

ToneMap MapForAll(const ByteTable& table) {
    return MapForChannel(ZQ_CHANNEL_RGB, table);
}

void MapColourRow(const u8* from, u8* to, i32 width, const ToneMap& map) {
    for (i32 x = 0; x < width; ++x, from += 3, to += 3) {
        to[0] = map.channels[0][from[0]];
        to[1] = map.channels[1][from[1]];
        to[2] = map.channels[2][from[2]];
    }
}

WorkEnd CopyRows(const KernelRun& run, RowRhythm rhythm) {
    return run.ForEachRow([&](const u8* from, u8* to) { std::memcpy(to, from, run.source.stride); },
                          rhythm);
}

WorkEnd ApplyToneMap(const KernelRun& run, const ToneMap& map, const ToneMapHabits& habits) {
    run.CopyHead();
    const DibView& source = run.source;
    switch (source.imageClass) {
    case ImageClass::Colour:
        if (habits.mapsPadding) {
            return run.ForEachRow([&](const u8* from, u8* to) {
                MapColourRow(from, to, source.width, map);
                MapBytes(from + source.rowBytes, to + source.rowBytes,
                         source.stride - source.rowBytes, map.channels[0]);
            });
        }
        return run.ForEachRow(
            [&](const u8* from, u8* to) { MapColourRow(from, to, source.width, map); });
    case ImageClass::Grey:
        return run.ForEachRow(
            [&](const u8* from, u8* to) { MapBytes(from, to, source.rowBytes, map.grey); });
    default:
        MapPalette(run, map, habits.clearsReservedByte);
        return CopyRows(run, habits.asksRarely ? RowRhythm::Rare : RowRhythm::EveryRow);
    }
}

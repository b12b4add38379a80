// What all tone maps share: tables of 256 values, applied to pixels or, in palette pictures, to the
// palette.
#pragma once

#include "engine/frame.h"
#include "engine/vector/map_bytes.h"

#include <zq/params.h>

// A table for the channels that a record's `channel` names: 0 all, 1 red, 2 green, any other value
// blue. The others stay as they are.
struct ToneMap {
    ByteTable table;
    i32 channel = ZQ_CHANNEL_RGB;
    bool leavesGrey = false; // grey pictures stay as they are, else they go through the table
};

// Works on the palette entries of the result: `colour(from, to)` reads blue, green and red at
// `from` and writes them at `to`. The fourth bytes stay as they are.
template <class Colour>
void ForEachPaletteColour(const KernelRun& run, const Colour& colour) {
    const u8* from = run.source.Palette();
    u8* to = run.ResultPalette();
    for (u32 entry = 0; entry < run.source.paletteEntries; ++entry) {
        colour(from, to);
        from += kPaletteEntryBytes;
        to += kPaletteEntryBytes;
    }
}

// Copies all rows, padding included.
WorkEnd CopyRows(const KernelRun& run, RowRhythm rhythm = RowRhythm::EveryRow);

// What a tone map does beyond its tables.
struct ToneMapHabits {
    bool mapsPadding = false; // 24-bit rows are mapped to the end of their padding
    bool clearsReservedByte =
        false;               // the fourth byte of a palette entry becomes 0, not the source's
    bool asksRarely = false; // palette pictures ask and report on every 32nd row only
};

// The pixel work of a tone map, for palette-aware kernels.
WorkEnd ApplyToneMap(const KernelRun& run, const ToneMap& map, const ToneMapHabits& habits = {});

// Records that count pixels are scaled down with the zoom while an effect runs on a preview, so
// that the preview shows what the effect will do to the whole picture.
#pragma once

#include "platform/types.h"
#include <zq/document.h>

#include <array>

// The words of one effect's record that count pixels.
struct PixelFieldsRow {
    EffectId id;
    std::array<u32, 2> words;
    std::size_t wordCount;
    i32 smallest;
    i32 largest;
};

// The effect's row; null when its record runs as it is.
const PixelFieldsRow* PixelFieldsOf(EffectId id);

// Scales a record's pixel counts in place as long as it lives, then puts the old values back.
class ScaledRecord {
public:
    ScaledRecord(void* record, EffectId id, i32 zoomPercent);
    ~ScaledRecord();
    ScaledRecord(const ScaledRecord&) = delete;
    ScaledRecord& operator=(const ScaledRecord&) = delete;

private:
    u8* const record_;
    const PixelFieldsRow* const row_;
    std::array<i32, 2> saved_{};
};

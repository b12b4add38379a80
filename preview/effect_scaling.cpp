#include "preview/effect_scaling.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr PixelFieldsRow kPixelFieldsTable[] = {
    {8, {0}, 1, 2, 32}, // side of the square
    {17, {0}, 1, 2, 32},  {18, {0}, 1, 2, 32},    {20, {0}, 1, 2, 32},
    {21, {0}, 1, 2, 32},  {35, {0}, 1, 1, 100}, // intensity that works as a distance
    {36, {0}, 1, 1, 100}, {37, {0}, 1, 1, 100},   {39, {0}, 1, 1, 100},
    {40, {0}, 1, 1, 100}, {52, {0, 1}, 2, 2, 32}, // width and height of a block
    {53, {1}, 1, 2, 32},                          // length of the trail
    {54, {2}, 1, 1, 10},                          // depth of the relief
};

i32 ReadWord(const u8* record, u32 word) {
    i32 value;
    std::memcpy(&value, record + word * sizeof(value), sizeof(value));
    return value;
}

void WriteWord(u8* record, u32 word, i32 value) {
    std::memcpy(record + word * sizeof(value), &value, sizeof(value));
}

} // namespace

const PixelFieldsRow* PixelFieldsOf(EffectId id) {
    const auto* row =
        std::find_if(std::begin(kPixelFieldsTable), std::end(kPixelFieldsTable),
                     [id](const PixelFieldsRow& candidate) { return candidate.id == id; });
    return row == std::end(kPixelFieldsTable) ? nullptr : row;
}

ScaledRecord::ScaledRecord(void* record, EffectId id, i32 zoomPercent)
    : record_(static_cast<u8*>(record)), row_(PixelFieldsOf(id)) {
    for (std::size_t i = 0; row_ != nullptr && i < row_->wordCount; ++i) {
        saved_[i] = ReadWord(record_, row_->words[i]);
        const i64 scaled = static_cast<i64>(saved_[i]) * zoomPercent / 100;
        WriteWord(record_, row_->words[i],
                  static_cast<i32>(std::clamp<i64>(scaled, row_->smallest, row_->largest)));
    }
}

ScaledRecord::~ScaledRecord() {
    for (std::size_t i = 0; row_ != nullptr && i < row_->wordCount; ++i) {
        WriteWord(record_, row_->words[i], saved_[i]);
    }
}

#include "tests/engine/reference/reference_run.h"

#include <cstring>

ReferenceRun::ReferenceRun(std::span<const u8> sourceBlock, i64 stopAtQuestion, u32 state)
    : block(sourceBlock), randomState(state), stopAtQuestion_(stopAtQuestion) {
    std::memcpy(&header, block.data(), sizeof header);
    w = header.biWidth;
    h = header.biHeight;
    const u32 bits = header.biBitCount;
    channels = bits == 24 ? 3 : 1;
    entries = bits == 24 ? 0 : static_cast<i32>(header.biClrUsed);
    head = 40 + 4 * static_cast<std::size_t>(entries);
    stride = (static_cast<std::size_t>(w) * bits + 31) / 32 * 4;
    result.resize(head + stride * static_cast<std::size_t>(h));

    bool grey = bits == 8 && entries == 256;
    for (i32 i = 0; grey && i < 256; ++i) {
        grey = Entry(i) == Pixel{i, i, i};
    }
    kind = bits == 24  ? ImageClass::Colour
           : grey      ? ImageClass::Grey
           : bits == 8 ? ImageClass::Palette8
           : bits == 4 ? ImageClass::Palette4
           : bits == 1 ? ImageClass::Mono
                       : ImageClass::None;
}

i32 ReferenceRun::Index(i32 x, i32 y) const {
    return kind == ImageClass::Palette4 ? At(x / 2, y, 0) >> (x % 2 == 0 ? 4 : 0) & 15
                                        : At(x, y, 0);
}

Pixel ReferenceRun::Entry(i32 index) const {
    const std::size_t at = 40 + static_cast<std::size_t>(index) * 4;
    return index < entries ? Pixel{block[at], block[at + 1], block[at + 2]} : Pixel{};
}

i32 ReferenceRun::Draw() {
    randomState = randomState * 214013 + 2531011;
    return static_cast<i32>(randomState >> 16 & 0x7FFF);
}

void ReferenceRun::CopyHead() {
    std::copy_n(block.data(), head, result.data());
    NoteQuestion();
}

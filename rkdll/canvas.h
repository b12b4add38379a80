// The 24-bit picture that a document is rendered into.
#pragma once

#include "engine/dib_format.h"
#include "rkdll/rkdll.h"

struct Canvas {
    i32 width;
    i32 height;
    u8* pixels; // bottom row first
    std::size_t stride;

    u8* Row(i32 y) const { return pixels + static_cast<std::size_t>(y) * stride; }
};

void PaintBackground(const Canvas& canvas, const RkBackground& background);

// Blends a layer at its place. One without a readable image shows nothing; one without a readable
// 8-bit mask is opaque.
void BlendLayer(const Canvas& canvas, const LayerEntry& layer);

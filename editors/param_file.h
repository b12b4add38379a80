// The frame of curve and filter files: a magic number, three words, and a payload.
#pragma once

#include "engine/block.h"

constexpr u32 kCurveFileMagic = 0x43435552;  // "RUCC"
constexpr u32 kFilterFileMagic = 0x43554446; // "FDUC"

// The head of a block that ReadParamFile gives; the payload stands right behind it.
struct ParamFile {
    u32 magic;
    u16 fileWord1; // curve: entries; filter: columns
    u16 fileWord2; // curve: mapping; filter: rows
    u16 fileWord3; // bits per value
    u32 payloadSize;
};

// No reader wants more of a payload than this; a block holds at most so much of it.
constexpr u32 kLargestKeptPayload = 0x10000;

// Gives a block that the caller frees, or 0: a file that cannot be read or is no ordinary one,
// another magic number, a file that ends before its payload does, no memory.
u32 ReadParamFile(const char* path, u32 magic);

// Creates or overwrites the file with the first `payloadSize` bytes of the block `payload`. Gives
// 1, or 0 when the file cannot be created or the block is smaller. A write that fails is silent.
u8 WriteParamFile(const char* path, u32 payload, u32 magic, u16 fileWord1, u16 fileWord2,
                  u16 fileWord3, u32 payloadSize);

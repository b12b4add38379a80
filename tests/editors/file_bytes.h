// Curve and filter files byte by byte.
#pragma once

#include "platform/types.h"

#include <vector>

inline void Append(std::vector<u8>& bytes, u32 value, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<u8>(value >> (8 * i)));
    }
}

inline std::vector<u8> FileBytes(u32 magic, u16 word1, u16 word2, u16 word3, u32 payloadSize,
                                 const std::vector<u8>& payload) {
    std::vector<u8> bytes;
    Append(bytes, magic, 4);
    for (const u16 word : {word1, word2, word3}) {
        Append(bytes, word, 2);
    }
    Append(bytes, payloadSize, 4);
    Append(bytes, 0, 4);
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    return bytes;
}

inline std::vector<u8> Words(const std::vector<i32>& values) {
    std::vector<u8> bytes;
    for (const i32 value : values) {
        Append(bytes, static_cast<u32>(value), 2);
    }
    return bytes;
}

// What lets plain loops over the bytes of a 24-bit row reach the other two channels of the same
// pixel: the neighbours at -2, -1, 1 and 2 belong to it where these masks are 255; elsewhere they
// are 0. They repeat with every third byte.
#pragma once

#include "platform/types.h"

#include <array>
#include <cstddef>

struct ChannelMasks {
    static constexpr std::size_t kBytes = 192; // whole pixels and whole vectors

    alignas(64) std::array<u8, kBytes> back2{};
    alignas(64) std::array<u8, kBytes> back1{};
    alignas(64) std::array<u8, kBytes> ahead1{};
    alignas(64) std::array<u8, kBytes> ahead2{};

    constexpr ChannelMasks() {
        for (std::size_t i = 0; i < kBytes; ++i) {
            back2[i] = i % 3 == 2 ? 255 : 0;
            back1[i] = i % 3 != 0 ? 255 : 0;
            ahead1[i] = i % 3 != 2 ? 255 : 0;
            ahead2[i] = i % 3 == 0 ? 255 : 0;
        }
    }
};

inline constexpr ChannelMasks kChannelMasks;

// Turns the bytes that a fuzzer makes up into values. At their end every value is 0.
#pragma once

#include "platform/types.h"

#include <algorithm>
#include <cstring>
#include <span>

class FuzzedBytes {
public:
    explicit FuzzedBytes(std::span<const u8> bytes) : bytes_(bytes) {}

    bool AtEnd() const { return bytes_.empty(); }

    std::span<const u8> Take(std::size_t count) {
        const auto taken = bytes_.first(std::min(count, bytes_.size()));
        bytes_ = bytes_.subspan(taken.size());
        return taken;
    }

    void TakeInto(void* target, std::size_t count) {
        const auto taken = Take(count);
        if (!taken.empty()) {
            std::memcpy(target, taken.data(), taken.size());
        }
    }

    template <class Value>
    Value Raw() {
        Value value{};
        TakeInto(&value, sizeof value);
        return value;
    }

    u8 Byte() { return Raw<u8>(); }

    // One time in 2 to the power of `bits`.
    bool Rarely(unsigned bits = 1) {
        const u8 mask = static_cast<u8>((1u << bits) - 1);
        return (Byte() & mask) == mask;
    }

    // Mostly a small number, such as sizes and parameters are, also an end of the range or any.
    i32 Number() {
        static constexpr i32 kEnds[] = {INT32_MIN, INT32_MIN + 1, -65536,        65536,
                                        1 << 30,   1 << 24,       INT32_MAX - 1, INT32_MAX};
        const u8 kind = Byte();
        if (kind < 200) {
            return kind < 160 ? kind : 159 - kind;
        }
        return kind < 248 ? Raw<i32>() : kEnds[kind - 248];
    }

private:
    std::span<const u8> bytes_;
};

// Objects behind handles. A handle is a slot's number and its generation, so that a stale or wrong
// one is found out. Handles fit 32 bits and are never below 65536.
#pragma once

#include "platform/types.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

template <class Object>
class HandleTable {
public:
    // 0 when the table is full.
    std::uintptr_t Add(Object object) {
        std::size_t index = slots_.size();
        if (!free_.empty()) {
            index = free_.back();
            free_.pop_back();
        } else if (index < kMostSlots) {
            slots_.emplace_back();
        } else {
            return 0;
        }
        slots_[index].object = std::move(object);
        return std::uintptr_t{slots_[index].generation} << 16 | index;
    }

    // Null for a null, stale or wrong handle. The address holds until the next Add.
    Object* Find(std::uintptr_t handle) {
        const std::size_t index = handle & 0xFFFF;
        if (index >= slots_.size() || slots_[index].generation != handle >> 16 ||
            !slots_[index].object) {
            return nullptr;
        }
        return &*slots_[index].object;
    }

    bool Remove(std::uintptr_t handle) {
        if (Find(handle) == nullptr) {
            return false;
        }
        const std::size_t index = handle & 0xFFFF;
        Slot& slot = slots_[index];
        slot.object.reset();
        slot.generation = static_cast<u16>(slot.generation == 0xFFFF ? 1 : slot.generation + 1);
        free_.push_back(index);
        return true;
    }

    std::size_t Count() const { return slots_.size() - free_.size(); }

private:
    static constexpr std::size_t kMostSlots = 65536;

    struct Slot {
        std::optional<Object> object;
        u16 generation = 1;
    };

    std::vector<Slot> slots_;
    std::vector<std::size_t> free_;
};

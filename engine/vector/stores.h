// How rows are written.
#pragma once

#include "engine/dib_format.h"

#include <hwy/cache_control.h>

enum class Stores {
    Cached,
    // Past the caches: what stood there before is not fetched first, so that a result that is much
    // larger than they are is written in two thirds of the time.
    Streamed,
};

inline Stores StoresFor(const DibView& source) {
    constexpr std::size_t kLarge = std::size_t{16} << 20;
    return source.size >= kLarge ? Stores::Streamed : Stores::Cached;
}

// To be called before others may read what was streamed.
inline void FinishStores() {
    hwy::FlushStream();
}

// Taking pages from the system costs more than most effects: some twenty milliseconds for a result
// of twelve megapixels. Huge pages make that five, and a result that was freed is soon followed by
// one of the same size, so that a few blocks wait here for their next use.
#include "platform/base/large_block.h"

#include <sys/mman.h>

#include <array>
#include <cstdint>
#include <mutex>
#include <type_traits>
#include <utility>

#if defined(__has_feature)
#define ZQ_HAS_FEATURE(feature) __has_feature(feature)
#else
#define ZQ_HAS_FEATURE(feature) 0
#endif

namespace {

#if defined(__SANITIZE_ADDRESS__) || ZQ_HAS_FEATURE(address_sanitizer)
constexpr std::size_t kSmallestLarge = SIZE_MAX;
#else
constexpr std::size_t kSmallestLarge = std::size_t{4} << 20;
#endif

constexpr std::size_t kHugePage = std::size_t{2} << 20;
// What may wait altogether: two results of sixteen megapixels in colour.
constexpr std::size_t kMostWaiting = std::size_t{96} << 20;
constexpr std::size_t kPlaces = 4;

// Whole huge pages; a length of 0 is no block.
struct Pages {
    u8* address;
    std::size_t length;
};

struct Waiting {
    std::mutex mutex;
    std::array<Pages, kPlaces> blocks{}; // the one that waits longest first
    std::size_t length = 0;              // of all
};
static_assert(std::is_trivially_destructible_v<Waiting>); // it lives as long as the process

constinit Waiting waiting;

std::size_t PagesLength(std::size_t bytes) {
    return (bytes + kHugePage - 1) / kHugePage * kHugePage;
}

// Takes the block at `place` out of the row. The mutex is held.
Pages RemoveWaiting(std::size_t place) {
    const Pages pages = waiting.blocks[place];
    for (; place + 1 < kPlaces; ++place) {
        waiting.blocks[place] = waiting.blocks[place + 1];
    }
    waiting.blocks[kPlaces - 1] = {};
    waiting.length -= pages.length;
    return pages;
}

// A waiting block of at least `length` bytes that does not waste more than a quarter of that.
Pages TakeWaiting(std::size_t length) {
    const std::lock_guard hold(waiting.mutex);
    std::size_t best = kPlaces;
    for (std::size_t place = 0; place < kPlaces; ++place) {
        const std::size_t offered = waiting.blocks[place].length;
        if (offered >= length && offered - length <= length / 4 &&
            (best == kPlaces || offered < waiting.blocks[best].length)) {
            best = place;
        }
    }
    return best == kPlaces ? Pages{} : RemoveWaiting(best);
}

void Unmap(const Pages& pages) {
    if (pages.length != 0) {
        munmap(pages.address, pages.length);
    }
}

// New pages, at an address that huge ones can have.
u8* MapPages(std::size_t length) {
    void* const mapped = mmap(nullptr, length + kHugePage, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) {
        return nullptr;
    }
    u8* const start = static_cast<u8*>(mapped);
    const std::size_t front = (kHugePage - reinterpret_cast<std::uintptr_t>(start) % kHugePage);
    Unmap({start, front % kHugePage});
    u8* const pages = start + front % kHugePage;
    Unmap({pages + length, kHugePage - front % kHugePage});
    // A wish: without huge pages the block is as good, only slower.
    madvise(pages, length, MADV_HUGEPAGE);
    return pages;
}

void UnmapAllWaiting() {
    for (std::size_t place = 0; place < kPlaces; ++place) {
        Pages pages;
        {
            const std::lock_guard hold(waiting.mutex);
            pages = RemoveWaiting(0);
        }
        Unmap(pages);
    }
}

} // namespace

bool IsLargeBlock(std::size_t bytes) {
    return bytes >= kSmallestLarge;
}

LargeBlock TakeLargeBlock(std::size_t bytes) {
    const std::size_t length = PagesLength(bytes);
    const Pages used = TakeWaiting(length);
    if (used.length == 0) {
        u8* pages = MapPages(length);
        if (pages == nullptr) {
            UnmapAllWaiting();
            pages = MapPages(length);
        }
        return {pages, true};
    }
    // Its length is found again from the bytes of the block, so the rest goes.
    Unmap({used.address + length, used.length - length});
    return {used.address, false};
}

void GiveLargeBlock(void* address, std::size_t bytes) {
    Pages pages = {static_cast<u8*>(address), PagesLength(bytes)};
    if (pages.length > kMostWaiting) {
        Unmap(pages);
        return;
    }
    // The system may take the memory of a block that waits as soon as it needs it.
    madvise(pages.address, pages.length, MADV_FREE);
    while (pages.length != 0) {
        Pages oldest = {};
        {
            const std::lock_guard hold(waiting.mutex);
            if (waiting.blocks[kPlaces - 1].length != 0 ||
                waiting.length + pages.length > kMostWaiting) {
                oldest = RemoveWaiting(0);
            } else {
                std::size_t place = 0;
                while (waiting.blocks[place].length != 0) {
                    ++place;
                }
                waiting.blocks[place] = pages;
                waiting.length += std::exchange(pages, Pages{}).length;
            }
        }
        Unmap(oldest);
    }
}

#include "platform/base/memory_testing.h"
#include "platform/base/unfilled_block.h"
#include "platform/types.h"
#include <zq/memory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

namespace {

constexpr UINT kFlags = GMEM_MOVEABLE | GMEM_ZEROINIT;

class Memory : public testing::Test {
protected:
    void SetUp() override { blocks_ = LiveBlockCount(); }
    void TearDown() override {
        FailAllocation(0);
        EXPECT_EQ(LiveBlockCount(), blocks_);
        EXPECT_EQ(LiveLockCount(), 0u);
    }

private:
    std::size_t blocks_ = 0;
};

void ExpectNamesNoBlock(HGLOBAL handle) {
    SCOPED_TRACE(handle);
    EXPECT_EQ(GlobalLock(handle), nullptr);
    EXPECT_EQ(GlobalUnlock(handle), 0);
    EXPECT_EQ(GlobalSize(handle), 0u);
    EXPECT_EQ(GlobalFlags(handle), GMEM_INVALID_HANDLE);
    EXPECT_EQ(GlobalFree(handle), handle);
}

TEST_F(Memory, ABlockIsZeroFilledAndKnowsItsSize) {
    constexpr std::size_t kMega = std::size_t{1} << 20;
    // In an order in which used memory is cut down, too small, and more than what is kept.
    for (const std::size_t bytes : {std::size_t{1}, std::size_t{1067}, 3 * kMega, 4 * kMega + 1,
                                    20 * kMega - 1, 17 * kMega, 19 * kMega + 7, 100 * kMega}) {
        // A block of that size that was written to goes first, so that its memory may come again.
        for (int round = 0; round < 2; ++round) {
            HGLOBAL block = GlobalAlloc(kFlags, bytes);
            ASSERT_NE(block, nullptr);
            EXPECT_EQ(ZqBlockOfHandle(ZqHandleOfBlock(block)), block) << "more than 32 bits";
            EXPECT_EQ(GlobalSize(block), bytes);
            auto* address = static_cast<u8*>(GlobalLock(block));
            ASSERT_NE(address, nullptr);
            EXPECT_EQ(std::count(address, address + bytes, 0), static_cast<std::ptrdiff_t>(bytes));
            std::memset(address, 0xA5, bytes);
            GlobalUnlock(block);
            EXPECT_EQ(GlobalFree(block), nullptr);
        }
    }
}

TEST_F(Memory, ABlockOfNoBytesExistsButCannotBeLocked) {
    HGLOBAL block = GlobalAlloc(kFlags, 0);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalLock(block), nullptr);
    EXPECT_EQ(GlobalFlags(block), 0u);
    EXPECT_EQ(GlobalFree(block), nullptr);
}

TEST_F(Memory, WrongHandlesNameNoBlock) {
    HGLOBAL block = GlobalAlloc(kFlags, 16);
    const std::uintptr_t handle = ZqHandleOfBlock(block);
    for (const std::uintptr_t wrong :
         {std::uintptr_t{0}, std::uintptr_t{1}, handle + 1, handle + 0x10000, handle - 0x10000,
          handle | std::uintptr_t{1} << 32, reinterpret_cast<std::uintptr_t>(&block)}) {
        ExpectNamesNoBlock(reinterpret_cast<HGLOBAL>(wrong));
    }
    std::mt19937 random(7);
    for (int i = 0; i < 10000; ++i) {
        const u32 guess = static_cast<u32>(random());
        ASSERT_TRUE(guess == handle || GlobalLock(ZqBlockOfHandle(guess)) == nullptr);
    }
    GlobalFree(block);
    ExpectNamesNoBlock(block);
}

TEST_F(Memory, AFreedHandleStaysStaleWhileItsSlotIsUsedAgain) {
    HGLOBAL first = GlobalAlloc(kFlags, 8);
    GlobalFree(first);
    // Somewhat fewer than a slot has generations, so that none may come again.
    std::vector<u32> handles = {ZqHandleOfBlock(first)};
    for (int i = 0; i < 60000; ++i) {
        HGLOBAL block = GlobalAlloc(kFlags, 8);
        ASSERT_EQ(GlobalFlags(first), GMEM_INVALID_HANDLE);
        handles.push_back(ZqHandleOfBlock(block));
        GlobalFree(block);
    }
    std::sort(handles.begin(), handles.end());
    EXPECT_EQ(std::adjacent_find(handles.begin(), handles.end()), handles.end());
    EXPECT_NE(handles.front(), 0u);
    // And past the last generation handles go on being good ones.
    for (int i = 0; i < 70000; ++i) {
        HGLOBAL block = GlobalAlloc(kFlags, 8);
        ASSERT_NE(block, nullptr);
        ASSERT_EQ(GlobalFree(block), nullptr);
    }
}

TEST_F(Memory, LocksAreCountedUpTo255) {
    HGLOBAL block = GlobalAlloc(kFlags, 4);
    void* const address = GlobalLock(block);
    for (UINT count = 2; count <= 255; ++count) {
        EXPECT_EQ(GlobalLock(block), address);
        EXPECT_EQ(GlobalFlags(block), count);
    }
    EXPECT_EQ(GlobalLock(block), nullptr);
    EXPECT_EQ(GlobalFlags(block), 255u);
    EXPECT_EQ(LiveLockCount(), 255u);
    for (UINT left = 255; left-- > 0;) {
        EXPECT_EQ(GlobalUnlock(block) != 0, left != 0);
    }
    EXPECT_EQ(GlobalUnlock(block), 0);
    EXPECT_EQ(GlobalFlags(block), 0u);
    GlobalLock(block);
    EXPECT_EQ(GlobalFree(block), nullptr) << "a locked block is freed as well";
}

TEST_F(Memory, GivesNullForOtherFlagsAndForMoreThanThereIs) {
    EXPECT_EQ(GlobalAlloc(GMEM_MOVEABLE, 4), nullptr);
    EXPECT_EQ(GlobalAlloc(0, 4), nullptr);
    EXPECT_EQ(GlobalAlloc(kFlags, SIZE_MAX), nullptr);
    EXPECT_EQ(GlobalAlloc(kFlags, SIZE_MAX / 2 + 1), nullptr);

    std::vector<HGLOBAL> blocks;
    while (HGLOBAL block = GlobalAlloc(kFlags, 0)) {
        blocks.push_back(block);
        ASSERT_LE(blocks.size(), 0x10000u);
    }
    EXPECT_GT(blocks.size(), 0xFF00u);
    GlobalFree(blocks.back());
    blocks.back() = GlobalAlloc(kFlags, 0);
    EXPECT_NE(blocks.back(), nullptr) << "a slot given back is free again";
    for (HGLOBAL block : blocks) {
        EXPECT_EQ(GlobalFree(block), nullptr);
    }
}

TEST_F(Memory, JustTheChosenAllocationFails) {
    FailAllocation(2);
    std::vector<HGLOBAL> blocks;
    for (int i = 0; i < 3; ++i) {
        blocks.push_back(GlobalAlloc(kFlags, 4));
    }
    EXPECT_EQ(AllocationCount(), 3u);
    EXPECT_NE(blocks[0], nullptr);
    EXPECT_EQ(blocks[1], nullptr);
    EXPECT_NE(blocks[2], nullptr);
    GlobalFree(blocks[0]);
    GlobalFree(blocks[2]);
}

TEST_F(Memory, LargeBlocksStayApartAndGoOnComing) {
    struct Live {
        HGLOBAL block;
        u8 mark;
    };
    std::vector<Live> live;
    std::mt19937 random(3);
    for (int step = 0; step < 100; ++step) {
        SCOPED_TRACE(step);
        if (live.size() < 6 && random() % 2 == 0) {
            const std::size_t bytes = (std::size_t{4} << 20) + random() % (std::size_t{12} << 20);
            const bool unfilled = random() % 2 == 0;
            HGLOBAL block = unfilled ? AllocateUnfilled(bytes) : GlobalAlloc(kFlags, bytes);
            auto* address = static_cast<u8*>(GlobalLock(block));
            ASSERT_NE(address, nullptr);
            ASSERT_EQ(GlobalSize(block), bytes);
            ASSERT_TRUE(unfilled || std::count(address, address + bytes, 0) ==
                                        static_cast<std::ptrdiff_t>(bytes));
            const u8 mark = static_cast<u8>(1 + step % 255);
            std::memset(address, mark, bytes);
            live.push_back({block, mark});
        } else if (!live.empty()) {
            const std::size_t chosen = random() % live.size();
            const auto [block, mark] = live[chosen];
            const auto* address = static_cast<const u8*>(GlobalLock(block));
            const auto bytes = static_cast<std::ptrdiff_t>(GlobalSize(block));
            ASSERT_EQ(std::count(address, address + bytes, mark), bytes)
                << "another one wrote here";
            ASSERT_EQ(GlobalFree(block), nullptr);
            live.erase(live.begin() + static_cast<std::ptrdiff_t>(chosen));
        }
    }
    for (const Live& left : live) {
        GlobalFree(left.block);
    }
}

TEST_F(Memory, UnfilledBlocksCanBeSpoilt) {
    SpoilUnfilledBlocks(true);
    for (const std::size_t bytes : {std::size_t{9}, std::size_t{5} << 20}) {
        HGLOBAL block = AllocateUnfilled(bytes);
        const auto* address = static_cast<const u8*>(GlobalLock(block));
        ASSERT_NE(address, nullptr);
        EXPECT_NE(address[0], 0);
        EXPECT_NE(address[bytes - 1], 0);
        GlobalFree(block);
        block = GlobalAlloc(kFlags, bytes);
        EXPECT_EQ(*static_cast<const u8*>(GlobalLock(block)), 0);
        GlobalFree(block);
    }
    SpoilUnfilledBlocks(false);
    EXPECT_EQ(AllocateUnfilled(SIZE_MAX / 2 + 1), nullptr);
}

TEST_F(Memory, ServesSeveralThreadsAtATime) {
    HGLOBAL shared = GlobalAlloc(kFlags, 4);
    std::vector<std::thread> threads;
    for (u8 mark = 1; mark <= 4; ++mark) {
        threads.emplace_back([shared, mark] {
            for (std::size_t n = 1; n <= 2000; ++n) {
                const std::size_t i = n % 200 == 0 ? n << 15 : n;
                HGLOBAL block = GlobalAlloc(kFlags, i);
                auto* address = static_cast<u8*>(GlobalLock(block));
                ASSERT_NE(address, nullptr);
                ASSERT_EQ(address[i - 1], 0);
                std::memset(address, mark, i);
                ASSERT_NE(GlobalLock(shared), nullptr);
                GlobalUnlock(shared);
                ASSERT_EQ(std::count(address, address + i, mark), static_cast<std::ptrdiff_t>(i));
                ASSERT_EQ(GlobalUnlock(block), 0);
                ASSERT_EQ(GlobalFree(block), nullptr);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(GlobalFlags(shared), 0u);
    GlobalFree(shared);
}

} // namespace

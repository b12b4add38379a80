// Guards that make a test fail when blocks or locks are left behind.
#pragma once

#include "engine/block.h"
#include "platform/base/memory_testing.h"
#include "tests/support/dib_maker.h"

#include <gtest/gtest.h>

#include <functional>

// At its end as many blocks and locks live as at its start.
class LeakGuard {
public:
    LeakGuard() : blocks_(LiveBlockCount()), locks_(LiveLockCount()) {}
    ~LeakGuard() {
        EXPECT_EQ(LiveBlockCount(), blocks_)
            << "blocks are left behind or were freed once too often";
        EXPECT_EQ(LiveLockCount(), locks_) << "locks and unlocks do not pair";
    }
    LeakGuard(const LeakGuard&) = delete;
    LeakGuard& operator=(const LeakGuard&) = delete;

private:
    std::size_t blocks_;
    std::size_t locks_;
};

// At its end the block's bytes and lock count are those of its start.
class UnchangedGuard {
public:
    explicit UnchangedGuard(u32 block)
        : block_(block), lockCount_(GlobalFlags(ZqBlockOfHandle(block))), bytes_(BytesOf(block)) {}
    ~UnchangedGuard() {
        EXPECT_EQ(GlobalFlags(ZqBlockOfHandle(block_)), lockCount_);
        EXPECT_TRUE(BytesOf(block_) == bytes_) << "the block was written to";
    }
    UnchangedGuard(const UnchangedGuard&) = delete;
    UnchangedGuard& operator=(const UnchangedGuard&) = delete;

private:
    u32 block_;
    UINT lockCount_;
    std::vector<u8> bytes_;
};

// A test that leaves nothing behind: no block, no lock, no allocation that is to fail.
class LeakGuardTest : public testing::Test {
protected:
    void TearDown() override { FailAllocation(0); }

private:
    LeakGuard guard_;
};

// Calls `run` once for each allocation in it and lets that one fail, then once more with none
// failing. After each call, `check(failed)` looks at what came of it. No call may leave a block or
// lock behind, so `check` frees what `run` gave. The answer is the number of allocations.
inline std::size_t FailEachAllocation(const std::function<void()>& run,
                                      const std::function<void(bool failed)>& check) {
    for (std::size_t n = 1;; ++n) {
        SCOPED_TRACE(testing::Message() << "allocation " << n << " fails");
        const LeakGuard guard;
        FailAllocation(n);
        run();
        const bool failed = AllocationCount() >= n;
        FailAllocation(0);
        check(failed);
        if (!failed) {
            return n - 1;
        }
    }
}

// For a `run` that gives a new DIB: whichever allocation fails, the answer is 0.
inline void ExpectZeroWhenAnAllocationFails(const std::function<DibHandle()>& run) {
    OwnedBlock result;
    const std::size_t allocations = FailEachAllocation([&] { result = OwnedBlock(run()); },
                                                       [&](bool failed) {
                                                           EXPECT_EQ(!result, failed);
                                                           result = OwnedBlock();
                                                       });
    EXPECT_GT(allocations, 0u) << "nothing was allocated";
}

// What every target has in common. A target is a file with RunOnBytes; it is linked with a fuzzer,
// or with a plain program that replays files.
#pragma once

#include "engine/block.h"
#include "engine/dib_format.h"
#include "fuzz/fuzzed_bytes.h"

#include <vector>

// One run on what a fuzzer made up. Ends the program when something does not hold.
void RunOnBytes(FuzzedBytes bytes);

// Ends the program, with a line that says so, when `holds` is false.
void Require(bool holds, const char* what);

// At its end no block and no lock is left that was not there before. As long as it lives, blocks of
// more than `largestBlock` bytes cannot be had, so that no run takes seconds.
class FuzzRun {
public:
    static constexpr std::size_t kUsualLargestBlock = std::size_t{1} << 20;

    explicit FuzzRun(std::size_t largestBlock = kUsualLargestBlock);
    ~FuzzRun();
    FuzzRun(const FuzzRun&) = delete;
    FuzzRun& operator=(const FuzzRun&) = delete;

private:
    std::size_t blocks_;
    std::size_t locks_;
};

// All bytes of a block; none of one that cannot be locked.
std::vector<u8> BytesOf(u32 block);

// At its end the block holds the bytes that it held before, and as many locks.
class UnwrittenBlock {
public:
    explicit UnwrittenBlock(u32 block);
    ~UnwrittenBlock();
    UnwrittenBlock(const UnwrittenBlock&) = delete;
    UnwrittenBlock& operator=(const UnwrittenBlock&) = delete;

private:
    u32 block_;
    UINT flags_;
    std::vector<u8> bytes_;
};

// A DIB that may lie in every word of its header, in a block that may be too short or too long.
OwnedBlock TakeDib(FuzzedBytes& bytes);

// 0, or a handle of nothing, or a new DIB, which `kept` owns.
DibHandle TakeHandle(FuzzedBytes& bytes, OwnedBlock& kept);

// As long as the longest record of an effect.
using FuzzedRecord = std::vector<u8>;
FuzzedRecord TakeRecord(FuzzedBytes& bytes);

// A number of an effect, mostly of one that there is.
EffectId TakeEffect(FuzzedBytes& bytes);

// Sits in the engine's hooks: watches the percents that are reported, and may stop a kernel at one
// of its questions or let one of its allocations fail.
class FuzzedHooks {
public:
    explicit FuzzedHooks(FuzzedBytes& bytes);
    ~FuzzedHooks();
    // The same for another run.
    void Rearm() const;
    FuzzedHooks(const FuzzedHooks&) = delete;
    FuzzedHooks& operator=(const FuzzedHooks&) = delete;

private:
    u32 stopAt_;
    std::size_t failAt_;
};

// The view of a DIB that an operation gave, which must be well formed.
DibView RequireWellFormed(DibHandle dib);

// `bytes` as an ordinary file, gone at the end of the scope.
class FuzzedFile {
public:
    explicit FuzzedFile(std::span<const u8> bytes);
    ~FuzzedFile();
    FuzzedFile(const FuzzedFile&) = delete;
    FuzzedFile& operator=(const FuzzedFile&) = delete;

    const char* Path() const { return path_; }

private:
    int file_;
    char path_[32];
};

#include "fuzz/fuzz_target.h"

#include "platform/base/memory_testing.h"

#include <zq/engine.h>

#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr std::size_t kLongestRecord = 260;
// Pictures within these take every kernel a few milliseconds, even under sanitizers.
constexpr u64 kMostPictureBytes = 12000;
constexpr i32 kMostRows = 160;

// ---- Pictures -----------------------------------------------------------------------------------

DibHeader TakeHeader(FuzzedBytes& bytes) {
    static constexpr u16 kDepths[] = {24, 8, 8, 4, 1, 24, 8};
    DibHeader header{};
    const u32 kind = bytes.Byte() % 8;
    header.biSize = 40;
    header.biBitCount = kind < 7 ? kDepths[kind] : bytes.Raw<u16>();
    header.biWidth = bytes.Number();
    header.biHeight = bytes.Number();
    if (header.biBitCount <= 8) {
        header.biClrUsed = bytes.Rarely() ? 1u << header.biBitCount : bytes.Raw<u16>() % 300;
    }
    if (bytes.Rarely(5)) {
        bytes.TakeInto(&header, sizeof header);
    }
    return header;
}

u64 SizeOf(const DibHeader& header) {
    const u64 stride = RowStride(static_cast<u32>(header.biWidth), header.biBitCount);
    return sizeof header + u64{header.biClrUsed} * kPaletteEntryBytes +
           stride * static_cast<u32>(header.biHeight);
}

// A grey ramp, or bytes as they come; then a pattern again and again.
void FillBehindHeader(FuzzedBytes& bytes, const DibHeader& header, std::span<u8> rest) {
    if (header.biClrUsed == kGreyPaletteEntries && bytes.Rarely()) {
        for (std::size_t i = 0; i < kGreyPaletteEntries && rest.size() >= 4; ++i) {
            std::fill_n(rest.begin(), 3, static_cast<u8>(i));
            rest = rest.subspan(4);
        }
    }
    const auto pattern = bytes.Take(bytes.Byte());
    for (std::size_t i = 0; i < rest.size(); ++i) {
        rest[i] = pattern.empty() ? static_cast<u8>(i * i * 40503 >> 9)
                                  : static_cast<u8>(pattern[i % pattern.size()] + i / 256);
    }
}

// ---- The engine's hooks -------------------------------------------------------------------------

u32 questionsLeft = 0;

void ZQ_CALL WatchProgress(int32_t percent) {
    Require(percent >= 0 && percent <= 100, "progress is a percentage");
}

int32_t ZQ_CALL StopAtTheLastQuestion() {
    return questionsLeft > 0 && --questionsLeft == 0 ? 1 : 0;
}

} // namespace

void Require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

FuzzRun::FuzzRun(std::size_t largestBlock) : blocks_(LiveBlockCount()), locks_(LiveLockCount()) {
    LimitAllocations(largestBlock);
}

FuzzRun::~FuzzRun() {
    LimitAllocations(0);
    Require(LiveBlockCount() == blocks_, "as many blocks live as before");
    Require(LiveLockCount() == locks_, "as many locks are held as before");
}

std::vector<u8> BytesOf(u32 block) {
    const BlockLock lock(block);
    return lock ? std::vector<u8>(lock.Bytes(), lock.Bytes() + BlockSize(block))
                : std::vector<u8>();
}

UnwrittenBlock::UnwrittenBlock(u32 block)
    : block_(block), flags_(GlobalFlags(ZqBlockOfHandle(block))), bytes_(BytesOf(block)) {}

UnwrittenBlock::~UnwrittenBlock() {
    Require(GlobalFlags(ZqBlockOfHandle(block_)) == flags_, "the source has the locks it had");
    Require(BytesOf(block_) == bytes_, "the source is as it was");
}

OwnedBlock TakeDib(FuzzedBytes& bytes) {
    const DibHeader header = TakeHeader(bytes);
    const u64 claimed = SizeOf(header);
    u64 size = claimed;
    if (claimed > kMostPictureBytes || header.biHeight > kMostRows) {
        size = bytes.Raw<u16>() % std::min(claimed, kMostPictureBytes);
    }
    if (bytes.Rarely(4)) {
        size = static_cast<u64>(std::max<i64>(static_cast<i64>(size) + bytes.Raw<i8>(), 0));
    }
    OwnedBlock block(AllocateBlock(size));
    const BlockLock lock(block.Handle());
    if (lock) {
        std::memcpy(lock.Bytes(), &header, std::min<std::size_t>(size, sizeof header));
        if (size > sizeof header) {
            FillBehindHeader(bytes, header, {lock.Bytes() + sizeof header, size - sizeof header});
        }
    }
    return block;
}

DibHandle TakeHandle(FuzzedBytes& bytes, OwnedBlock& kept) {
    switch (bytes.Byte() % 16) {
    case 15:
        return 0;
    case 14:
        return bytes.Raw<u32>();
    case 13: {
        const DibHandle stale = AllocateBlock(64);
        FreeBlock(stale);
        return stale;
    }
    default:
        kept = TakeDib(bytes);
        return kept.Handle();
    }
}

FuzzedRecord TakeRecord(FuzzedBytes& bytes) {
    FuzzedRecord record(kLongestRecord);
    if (bytes.Rarely(3)) {
        bytes.TakeInto(record.data(), record.size());
        return record;
    }
    for (std::size_t at = 0; at < record.size(); at += sizeof(i32)) {
        const i32 number = bytes.Number();
        std::memcpy(record.data() + at, &number, sizeof number);
        if (at == 12 && !bytes.Rarely()) {
            break;
        }
    }
    return record;
}

EffectId TakeEffect(FuzzedBytes& bytes) {
    const u8 id = bytes.Byte();
    return id < 250 ? id % 71 : bytes.Number();
}

FuzzedHooks::FuzzedHooks(FuzzedBytes& bytes)
    : stopAt_(bytes.Rarely(2) ? bytes.Byte() % 64 : 0),
      failAt_(bytes.Rarely(3) ? bytes.Byte() % 8 : 0) {
    progressHook = WatchProgress;
    abortHook = StopAtTheLastQuestion;
    Rearm();
}

void FuzzedHooks::Rearm() const {
    questionsLeft = stopAt_;
    FailAllocation(failAt_);
}

FuzzedHooks::~FuzzedHooks() {
    FailAllocation(0);
    progressHook = nullptr;
    abortHook = nullptr;
}

DibView RequireWellFormed(DibHandle dib) {
    const BlockLock lock(dib);
    DibView view;
    Require(lock && ViewDib(lock.Bytes(), BlockSize(dib), view), "the result is well formed");
    return view;
}

FuzzedFile::FuzzedFile(std::span<const u8> bytes) : file_(memfd_create("fuzzed", 0)) {
    std::snprintf(path_, sizeof path_, "/proc/self/fd/%d", file_);
    Require(write(file_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "there is room for the file");
}

FuzzedFile::~FuzzedFile() {
    close(file_);
}

#include "editors/param_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace {

// In the file: magic 4, words 2 2 2, size 4, two reserved words; all little-endian, no gaps.
constexpr std::size_t kHeadBytes = 18;
using Head = std::array<u8, kHeadBytes>;

struct CloseStream {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, CloseStream>;

u16 ReadWord(const Head& head, std::size_t at) {
    return static_cast<u16>(head[at] | head[at + 1] << 8);
}

u32 ReadLong(const Head& head, std::size_t at) {
    return ReadWord(head, at) | static_cast<u32>(ReadWord(head, at + 2)) << 16;
}

void StoreWord(Head& head, std::size_t at, u32 value) {
    head[at] = static_cast<u8>(value);
    head[at + 1] = static_cast<u8>(value >> 8);
}

void StoreLong(Head& head, std::size_t at, u32 value) {
    StoreWord(head, at, value);
    StoreWord(head, at + 2, value >> 16);
}

// The size of an ordinary file; 0 for anything else, a pipe among them, which must not be opened.
u64 OrdinaryFileBytes(const char* path) {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure)) {
        return 0;
    }
    const auto bytes = std::filesystem::file_size(path, failure);
    return failure ? 0 : bytes;
}

} // namespace

u32 ReadParamFile(const char* path, u32 magic) {
    const u64 fileBytes = OrdinaryFileBytes(path);
    const Stream stream(fileBytes < kHeadBytes ? nullptr : std::fopen(path, "rb"));
    Head head;
    if (!stream || std::fread(head.data(), 1, kHeadBytes, stream.get()) != kHeadBytes) {
        return 0;
    }
    const ParamFile file = {ReadLong(head, 0), ReadWord(head, 4), ReadWord(head, 6),
                            ReadWord(head, 8), ReadLong(head, 10)};
    if (file.magic != magic || fileBytes - kHeadBytes < file.payloadSize) {
        return 0;
    }
    const u32 kept = std::min(file.payloadSize, kLargestKeptPayload);
    OwnedBlock block(AllocateBlock(sizeof(ParamFile) + kept));
    const BlockLock lock(block.Handle());
    if (!lock || std::fread(lock.Bytes() + sizeof(ParamFile), 1, kept, stream.get()) != kept) {
        return 0;
    }
    *reinterpret_cast<ParamFile*>(lock.Bytes()) = file;
    return block.HandOver();
}

u8 WriteParamFile(const char* path, u32 payload, u32 magic, u16 fileWord1, u16 fileWord2,
                  u16 fileWord3, u32 payloadSize) {
    const BlockLock lock(payload);
    if (payloadSize > BlockSize(payload) || (payloadSize > 0 && !lock)) {
        return 0;
    }
    const Stream stream(std::fopen(path, "wb"));
    if (!stream) {
        return 0;
    }
    Head head = {};
    StoreLong(head, 0, magic);
    StoreWord(head, 4, fileWord1);
    StoreWord(head, 6, fileWord2);
    StoreWord(head, 8, fileWord3);
    StoreLong(head, 10, payloadSize);
    std::fwrite(head.data(), 1, kHeadBytes, stream.get());
    std::fwrite(lock.Bytes(), 1, payloadSize, stream.get());
    return 1;
}

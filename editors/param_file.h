// The frame of curve and filter files: a magic number, three words, and a payload.
#pragma once

#include "engine/block.h"

#include <span>

constexpr u32 kCurveFileMagic = 0x43435552;  // "RUCC"
constexpr u32 kFilterFileMagic = 0x43554446; // "FDUC"

// The head of a file. In a block that ReadParamFile gives the payload stands right behind it.
struct ParamFile {
    u32 magic;
    u16 fileWord1; // curve: entries; filter: columns
    u16 fileWord2; // curve: mapping; filter: rows
    u16 fileWord3; // bits per value
    u32 payloadSize;
};

// Gives a block that the caller frees, or 0: a file that cannot be read, another magic number, a
// file that ends before its payload does, no memory. Memory is taken for no more than the file has.
u32 ReadParamFile(const char* path, u32 magic);

// Creates or overwrites the file. Gives 1, or 0 when it cannot be created. A write that fails is
// silent.
u8 WriteParamFile(const char* path, const ParamFile& head, std::span<const u8> payload);

// A block of ReadParamFile, locked; freed at the end of the scope.
class OpenParamFile {
public:
    OpenParamFile(const char* path, u32 magic)
        : block_(ReadParamFile(path, magic)), lock_(block_.Handle()) {}

    // False when there is no such file.
    explicit operator bool() const { return static_cast<bool>(lock_); }
    const ParamFile& Head() const { return *reinterpret_cast<const ParamFile*>(lock_.Bytes()); }
    std::span<const u8> Payload() const {
        return {lock_.Bytes() + sizeof(ParamFile), Head().payloadSize};
    }

private:
    OwnedBlock block_;
    BlockLock lock_;
};

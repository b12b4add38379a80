// PNG files chunk by chunk, so that sums of bytes and packed pixels do not keep every change out.
#include "fuzz/picture_reading.h"

#include <array>
#include <zlib.h>

namespace {

using File = std::vector<u8>;

constexpr std::array<u8, 8> kSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

void Append(File& file, std::span<const u8> bytes) {
    file.insert(file.end(), bytes.begin(), bytes.end());
}

void AppendLong(File& file, u32 value) {
    const std::array<u8, 4> bytes = {static_cast<u8>(value >> 24), static_cast<u8>(value >> 16),
                                     static_cast<u8>(value >> 8), static_cast<u8>(value)};
    Append(file, bytes);
}

void AppendChunk(File& file, std::span<const u8> type, std::span<const u8> content) {
    AppendLong(file, static_cast<u32>(content.size()));
    const std::size_t start = file.size();
    Append(file, type);
    Append(file, content);
    const auto summed = static_cast<uInt>(file.size() - start);
    AppendLong(file, static_cast<u32>(crc32(0, file.data() + start, summed)));
}

File TakeHead(FuzzedBytes& bytes) {
    static constexpr u8 kBits[] = {1, 2, 4, 8, 16, 8, 8, 3};
    static constexpr u8 kTypes[] = {0, 2, 3, 4, 6, 3, 2, 1};
    File head;
    AppendLong(head, static_cast<u32>(bytes.Number()));
    AppendLong(head, static_cast<u32>(bytes.Number()));
    const u8 kind = bytes.Byte();
    head.push_back(kBits[kind % 8]);
    head.push_back(kTypes[kind / 8 % 8]);
    head.push_back(kind == 255);
    head.push_back(kind == 254);
    head.push_back(bytes.Byte() % 16 / 7); // interlaced; 2 is not known
    return head;
}

// Scan lines of any bytes, again and again.
File TakePixels(FuzzedBytes& bytes) {
    const std::size_t times = 1 + bytes.Byte() % 32;
    const auto pattern = bytes.Take(bytes.Byte());
    File lines;
    for (std::size_t i = 0; i < times; ++i) {
        Append(lines, pattern);
    }
    uLongf length = compressBound(lines.size());
    File packed(length);
    compress(packed.data(), &length, lines.data(), lines.size());
    packed.resize(length);
    return packed;
}

void TakeChunk(FuzzedBytes& bytes, File& file) {
    static constexpr char kTypes[][5] = {"PLTE", "tRNS", "gAMA", "cHRM", "bKGD", "sBIT",
                                         "hIST", "pHYs", "iCCP", "sRGB", "tEXt", "zTXt",
                                         "iTXt", "sPLT", "tIME", "eXIf", "IHDR", "IEND"};
    const u8 kind = bytes.Byte();
    if (kind % 4 == 0) {
        AppendChunk(file, std::array<u8, 4>{'I', 'D', 'A', 'T'}, TakePixels(bytes));
        return;
    }
    const std::size_t index = kind / 4 % (std::size(kTypes) + 1);
    std::array<u8, 4> type{};
    if (index < std::size(kTypes)) {
        std::copy_n(kTypes[index], type.size(), type.begin());
    } else {
        bytes.TakeInto(type.data(), type.size());
    }
    const std::size_t length = kind % 4 == 1 ? bytes.Byte() * std::size_t{3} : bytes.Byte();
    AppendChunk(file, type, bytes.Take(length));
}

} // namespace

void RunOnBytes(FuzzedBytes bytes) {
    File file(kSignature.begin(), kSignature.end());
    if (!bytes.Rarely(3)) {
        AppendChunk(file, std::array<u8, 4>{'I', 'H', 'D', 'R'}, TakeHead(bytes));
        while (!bytes.AtEnd()) {
            TakeChunk(bytes, file);
        }
        AppendChunk(file, std::array<u8, 4>{'I', 'E', 'N', 'D'}, {});
    } else {
        Append(file, bytes.Take(SIZE_MAX));
    }
    ReadPictureBytes(file);
}

#include "platform/base/resource_file.h"

#include "platform/base/byte_reader.h"
#include "platform/base/module.h"

namespace {

// Two sizes, type and name as numbers, and 16 bytes that nobody needs.
constexpr u32 kSmallestHeaderBytes = 32;
constexpr unsigned kStringsPerBlock = 16;

// The type or name of a resource; a text answers -1, for none is looked up by text here.
int ReadNumber(ByteReader& header) {
    if (header.SkipOrdinalMark()) {
        return header.U16();
    }
    header.TerminatedText();
    return -1;
}

} // namespace

std::span<const u8> FindResourceBytes(HINSTANCE module, u16 type, u16 id) {
    if (module == nullptr || module->resources == nullptr) {
        return {};
    }
    ByteReader file({module->resources, module->resourceBytes});
    for (;;) {
        ByteReader sizes = file;
        const u32 dataBytes = sizes.U32();
        const u32 headerBytes = sizes.U32();
        if (headerBytes < kSmallestHeaderBytes) {
            return {};
        }
        ByteReader header(file.Take(headerBytes));
        const auto data = file.Take(dataBytes);
        file.Align4();
        if (file.Failed()) {
            return {};
        }
        header.Take(2 * sizeof(u32));
        const int foundType = ReadNumber(header);
        const int foundId = ReadNumber(header);
        if (foundType == type && foundId == id && !header.Failed()) {
            return data;
        }
    }
}

std::optional<std::string> LoadStringResource(HINSTANCE module, u16 id) {
    const u16 block = static_cast<u16>(id / kStringsPerBlock + 1);
    ByteReader strings(FindResourceBytes(module, kResourceString, block));
    for (unsigned before = id % kStringsPerBlock; before > 0; --before) {
        strings.Take(u64{2} * strings.U16());
    }
    std::string text = strings.Text(strings.U16());
    if (strings.Failed() || text.empty()) {
        return std::nullopt;
    }
    return text;
}

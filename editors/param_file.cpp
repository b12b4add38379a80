#include "editors/param_file.h"

#include "platform/win32.h"

#include <array>

namespace {

// In the file: magic 4, words 2 2 2, size 4, two reserved words; all little-endian, no gaps.
constexpr UINT kHeadBytes = 18;
using Head = std::array<u8, kHeadBytes>;

// A file that is closed at the end of the scope.
class OpenedFile {
public:
    OpenedFile(const char* path, UINT style) : file_(OpenFile(path, &description_, style)) {}
    ~OpenedFile() {
        if (*this) {
            _lclose(file_);
        }
    }
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;

    explicit operator bool() const { return file_ != HFILE_ERROR; }

    // The bytes behind the head; below 0 when there is no whole head, or when they cannot be
    // counted, as those of a pipe.
    LONG PayloadBytes() const {
        const LONG bytes = _llseek(file_, 0, FILE_END);
        return _llseek(file_, 0, FILE_BEGIN) == 0 ? bytes - static_cast<LONG>(kHeadBytes) : -1;
    }
    bool Read(u8* bytes, u32 count) const { return _lread(file_, bytes, count) == count; }
    void Write(const u8* bytes, u32 count) const {
        _lwrite(file_, reinterpret_cast<const char*>(bytes), count);
    }

private:
    OFSTRUCT description_;
    HFILE file_;
};

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

} // namespace

u32 ReadParamFile(const char* path, u32 magic) {
    const OpenedFile stream(path, OF_READ);
    const LONG held = stream ? stream.PayloadBytes() : -1;
    Head head;
    if (held < 0 || !stream.Read(head.data(), kHeadBytes)) {
        return 0;
    }
    const ParamFile file = {ReadLong(head, 0), ReadWord(head, 4), ReadWord(head, 6),
                            ReadWord(head, 8), ReadLong(head, 10)};
    if (file.magic != magic || file.payloadSize > static_cast<u32>(held)) {
        return 0;
    }
    OwnedBlock block(AllocateBlock(sizeof(ParamFile) + u64{file.payloadSize}));
    const BlockLock lock(block.Handle());
    if (!lock || !stream.Read(lock.Bytes() + sizeof(ParamFile), file.payloadSize)) {
        return 0;
    }
    *reinterpret_cast<ParamFile*>(lock.Bytes()) = file;
    return block.HandOver();
}

u8 WriteParamFile(const char* path, const ParamFile& file, std::span<const u8> payload) {
    const OpenedFile stream(path, OF_CREATE | OF_READWRITE);
    if (!stream) {
        return 0;
    }
    Head head = {};
    StoreLong(head, 0, file.magic);
    StoreWord(head, 4, file.fileWord1);
    StoreWord(head, 6, file.fileWord2);
    StoreWord(head, 8, file.fileWord3);
    StoreLong(head, 10, file.payloadSize);
    stream.Write(head.data(), kHeadBytes);
    stream.Write(payload.data(), static_cast<u32>(payload.size()));
    return 1;
}

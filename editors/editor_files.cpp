#include "editors/editor_files.h"

#include "editors/param_file.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace {

constexpr i32 kFilterSide = 5;

// A file's block, locked, with its payload.
class OpenParamFile {
public:
    OpenParamFile(const char* path, u32 magic)
        : block_(ReadParamFile(path, magic)), lock_(block_.Handle()) {}

    explicit operator bool() const { return static_cast<bool>(lock_); }
    const ParamFile& Head() const { return *reinterpret_cast<const ParamFile*>(lock_.Bytes()); }
    std::span<const u8> Payload() const {
        return {lock_.Bytes() + sizeof(ParamFile), BlockSize(block_.Handle()) - sizeof(ParamFile)};
    }

private:
    OwnedBlock block_;
    BlockLock lock_;
};

// Stores the next 16-bit value with its sign, if there is one.
void TakeValue(std::span<const u8>& payload, i32& value) {
    if (payload.size() >= 2) {
        value = static_cast<i16>(payload[0] | payload[1] << 8);
        payload = payload.subspan(2);
    }
}

} // namespace

bool ReadCurveFile(const char* path, MagicMirrorParams& params) {
    const OpenParamFile file(path, kCurveFileMagic);
    if (!file) {
        return false;
    }
    params.mapping = file.Head().fileWord2;
    const std::size_t entries =
        std::min({file.Payload().size(), sizeof(params.curve), std::size_t{file.Head().fileWord1}});
    std::memcpy(params.curve, file.Payload().data(), entries);
    return true;
}

bool ReadFilterFile(const char* path, UserFilterParams& params) {
    const OpenParamFile file(path, kFilterFileMagic);
    if (!file) {
        return false;
    }
    std::span<const u8> payload = file.Payload();
    const i32 columns = std::min<i32>(file.Head().fileWord1, kFilterSide);
    const i32 rows = std::min<i32>(file.Head().fileWord2, kFilterSide);
    for (i32 row = 0; row < rows; ++row) {
        for (i32 column = 0; column < columns; ++column) {
            TakeValue(payload, params.cells[row * kFilterSide + column]);
        }
    }
    TakeValue(payload, params.scale);
    TakeValue(payload, params.bias);
    TakeValue(payload, params.symmetry);
    return true;
}

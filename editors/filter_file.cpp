#include "editors/filter_file.h"

#include "editors/param_file.h"

#include <algorithm>
#include <span>

namespace {

constexpr u16 kBitsPerValue = 16;
constexpr std::size_t kValues = kFilterCells + 3;
using Payload = std::array<u8, 2 * kValues>;

std::optional<i16> TakeValue(std::span<const u8>& payload) {
    if (payload.size() < 2) {
        payload = {};
        return std::nullopt;
    }
    const auto value = static_cast<i16>(payload[0] | payload[1] << 8);
    payload = payload.subspan(2);
    return value;
}

void AppendValue(u8*& end, i32 value) {
    *end++ = static_cast<u8>(value);
    *end++ = static_cast<u8>(value >> 8);
}

Payload ToPayload(const UserFilterParams& params) {
    Payload payload;
    u8* end = payload.data();
    for (const i32 cell : params.cells) {
        AppendValue(end, cell);
    }
    AppendValue(end, params.scale);
    AppendValue(end, params.bias);
    AppendValue(end, params.symmetry);
    return payload;
}

} // namespace

std::optional<FilterFile> ReadFilterFile(const char* path) {
    const OpenParamFile opened(path, kFilterFileMagic);
    if (!opened) {
        return std::nullopt;
    }
    std::span<const u8> payload = opened.Payload();
    const int columns = std::min<int>(opened.Head().fileWord1, kFilterSide);
    const int rows = std::min<int>(opened.Head().fileWord2, kFilterSide);
    FilterFile file;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            file.cells[static_cast<std::size_t>(row * kFilterSide + column)] = TakeValue(payload);
        }
    }
    file.scale = TakeValue(payload);
    file.bias = TakeValue(payload);
    file.symmetry = TakeValue(payload);
    return file;
}

bool WriteFilterFile(const char* path, const UserFilterParams& params) {
    const ParamFile head = {kFilterFileMagic, kFilterSide, kFilterSide, kBitsPerValue,
                            sizeof(Payload)};
    return WriteParamFile(path, head, ToPayload(params)) != 0;
}

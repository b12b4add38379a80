#include "editors/curve_file.h"

#include "editors/param_file.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr u16 kEntries = sizeof(MagicMirrorParams::curve);
constexpr u16 kBitsPerEntry = 8;

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

bool WriteCurveFile(const char* path, const MagicMirrorParams& params) {
    const ParamFile head = {kCurveFileMagic, kEntries, static_cast<u16>(params.mapping),
                            kBitsPerEntry, kEntries};
    return WriteParamFile(path, head, params.curve) != 0;
}

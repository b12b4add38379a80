// Curve and filter files: what is read once comes back the same from a file that we write.
#include "editors/curve_file.h"
#include "editors/filter_file.h"
#include "fuzz/fuzz_target.h"

#include <cstring>

namespace {

void ReadCurve(const char* path) {
    MagicMirrorParams params{};
    if (!ReadCurveFile(path, params)) {
        return;
    }
    Require(params.mapping >= 0 && params.mapping <= UINT16_MAX, "a mapping is one word");
    Require(WriteCurveFile(path, params), "the file can be written");
    MagicMirrorParams again{};
    Require(ReadCurveFile(path, again) && std::memcmp(&params, &again, sizeof params) == 0,
            "a written curve is read back");
}

void ReadFilter(const char* path) {
    const auto file = ReadFilterFile(path);
    if (!file) {
        return;
    }
    UserFilterParams params{};
    for (std::size_t i = 0; i < kFilterCells; ++i) {
        params.cells[i] = file->cells[i].value_or(0);
    }
    params.scale = file->scale.value_or(0);
    params.bias = file->bias.value_or(0);
    params.symmetry = file->symmetry.value_or(0);
    Require(WriteFilterFile(path, params), "the file can be written");
    const auto again = ReadFilterFile(path);
    Require(again && again->scale == params.scale && again->bias == params.bias &&
                again->symmetry == params.symmetry &&
                std::equal(again->cells.begin(), again->cells.end(), params.cells),
            "a written filter is read back");
}

} // namespace

void RunOnBytes(FuzzedBytes bytes) {
    const FuzzRun run;
    const auto all = bytes.Take(SIZE_MAX);
    ReadCurve(FuzzedFile(all).Path());
    ReadFilter(FuzzedFile(all).Path());
}

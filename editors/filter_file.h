// User's filters in files, ".udf".
#pragma once

#include "editors/filter_mirroring.h"
#include "platform/types.h"
#include <zq/params.h>

#include <array>
#include <optional>

// What a file holds; its payload may end anywhere.
struct FilterFile {
    std::array<std::optional<i16>, kFilterCells> cells;
    std::optional<i16> scale;
    std::optional<i16> bias;
    std::optional<i16> symmetry;
};

// Nothing when the file is none.
std::optional<FilterFile> ReadFilterFile(const char* path);

// Values beyond 16 bits lose their high bits. False when the file cannot be created.
bool WriteFilterFile(const char* path, const UserFilterParams& params);

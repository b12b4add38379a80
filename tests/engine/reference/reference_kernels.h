// The reference kernels by family. Each gives false where the engine refuses; otherwise it fills
// the run's result.
#pragma once

#include "tests/engine/reference/reference_run.h"
#include <zq/params.h>

#include <cstring>
#include <type_traits>

struct NoParams {};

struct ReferenceRow {
    EffectId id;
    bool (*kernel)(ReferenceRun& run, const void* params);
    bool showsCursor = true;
    bool reportsEnd = true;
};

// A kernel that takes its record by reference, as a row takes it.
template <auto kernel>
constexpr auto With = []<class Params>(bool (*)(ReferenceRun&, const Params&)) {
    return [](ReferenceRun& run, const void* record) {
        Params params{};
        if constexpr (!std::is_same_v<Params, NoParams>) {
            if (record == nullptr) {
                return false;
            }
            std::memcpy(&params, record, sizeof params);
        }
        return kernel(run, params);
    };
}(kernel);

extern const std::span<const ReferenceRow> kColourReferences;
extern const std::span<const ReferenceRow> kNeighbourhoodReferences;
extern const std::span<const ReferenceRow> kArtisticReferences;
extern const std::span<const ReferenceRow> kDistortionReferences;
extern const std::span<const ReferenceRow> kReliefReferences;

#include "tests/engine/reference/reference.h"

#include "tests/engine/reference/reference_kernels.h"

#include <cstring>
#include <map>

namespace {

struct Row {
    bool (*kernel)(ReferenceRun& run, const void* params);
    bool showsCursor = true;
    bool reportsEnd = true;
};

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

const std::map<EffectId, Row> kRows = {
    {1, {With<BrightnessContrastReference>}},
    {3, {With<ToneTableReference>}},
    {4, {With<ColorReductionReference>}},
};

} // namespace

ReferenceResult RunReference(std::span<const u8> block, EffectId id, const void* params,
                             i64 stopAtQuestion, u32 randomState) {
    ReferenceRun run(block, stopAtQuestion, randomState);
    const Row& row = kRows.at(id);
    try {
        if (!row.kernel(run, params)) {
            return {{}, {}, randomState};
        }
    } catch (const Stopped&) {
        run.result.clear();
    }
    if (row.reportsEnd) {
        run.Report(100);
    }
    if (row.showsCursor) {
        run.trace.insert(run.trace.begin(), EngineProbe::kBusyCursor);
        run.trace.push_back(EngineProbe::kArrowCursor);
    }
    return {run.result, run.trace, run.randomState};
}

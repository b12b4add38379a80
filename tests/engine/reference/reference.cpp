#include "tests/engine/reference/reference.h"

#include "tests/engine/reference/reference_kernels.h"

namespace {

const ReferenceRow* FindRow(EffectId id) {
    for (const auto rows : {kColourReferences, kNeighbourhoodReferences, kArtisticReferences,
                            kDistortionReferences, kReliefReferences}) {
        for (const ReferenceRow& row : rows) {
            if (row.id == id) {
                return &row;
            }
        }
    }
    return nullptr;
}

} // namespace

ReferenceResult RunReference(std::span<const u8> block, EffectId id, const void* params,
                             i64 stopAtQuestion, u32 randomState) {
    ReferenceRun run(block, stopAtQuestion, randomState);
    const ReferenceRow* row = FindRow(id);
    try {
        if (row == nullptr || !row->kernel(run, params)) {
            return {{}, {}, randomState};
        }
    } catch (const Stopped&) {
        run.result.clear();
    }
    if (row->reportsEnd) {
        run.Report(100);
    }
    if (row->showsCursor) {
        run.trace.insert(run.trace.begin(), EngineProbe::kBusyCursor);
        run.trace.push_back(EngineProbe::kArrowCursor);
    }
    return {run.result, run.trace, run.randomState};
}

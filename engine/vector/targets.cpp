#include "engine/vector/targets.h"

#define HWY_WANT_AVX3_DL // as some files want it
#include <hwy/highway.h>

std::vector<i64> VectorTargets() {
    const std::vector<i64> targets = hwy::SupportedAndGeneratedTargets();
    return targets.empty() ? std::vector<i64>{HWY_STATIC_TARGET} : targets;
}

std::string VectorTargetName(i64 target) {
    return hwy::TargetName(target);
}

void UseVectorTarget(i64 target) {
    hwy::SetSupportedTargetsForTest(target);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

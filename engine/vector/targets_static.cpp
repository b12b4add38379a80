// Where the code is compiled for one instruction set only.
#include "engine/vector/targets.h"

#include <hwy/highway.h>

std::vector<i64> VectorTargets() {
    return {HWY_STATIC_TARGET};
}

std::string VectorTargetName(i64) {
    return "the only one";
}

void UseVectorTarget(i64) {}

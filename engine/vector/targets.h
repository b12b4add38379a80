// The instruction sets for which the files of this folder, and the kernels that are vector code
// themselves, are compiled. The best one that the processor has is chosen at the first call.
//
// Such a file is compiled once for each instruction set: it names itself in HWY_TARGET_INCLUDE,
// includes <hwy/foreach_target.h> and <hwy/highway.h>, has its code in HWY_NAMESPACE between
// HWY_BEFORE_NAMESPACE and HWY_AFTER_NAMESPACE, and under HWY_ONCE the function that others call.
// Every version gives the same bytes. Plain loops that the compiler turns into vector code are
// preferred to explicit operations.
#pragma once

#include "platform/types.h"

#include <string>
#include <vector>

// The instruction sets of this processor for which there is code, the best one first. There is
// always one.
std::vector<i64> VectorTargets();

std::string VectorTargetName(i64 target);

// For tests and benchmarks: from now on all threads run the code for `target`, one of
// VectorTargets(); 0 is the best one again. Not to be called while a kernel runs.
void UseVectorTarget(i64 target);

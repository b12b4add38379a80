#include "tests/engine/kernel_check.h"

#include "tests/support/engine_probe.h"

#include <gtest/gtest.h>

namespace {

class Kernel : public testing::TestWithParam<CheckedKernel> {};

TEST_P(Kernel, GivesTheBytesRhythmAndDrawsOfItsReference) {
    OnFreshThread([] { CheckKernel(GetParam()); });
}

INSTANTIATE_TEST_SUITE_P(Every, Kernel, testing::ValuesIn(CheckedKernels()),
                         [](const auto& info) { return info.param.name; });

} // namespace

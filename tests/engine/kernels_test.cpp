#include "tests/engine/kernel_check.h"

#include "tests/support/engine_probe.h"

#include <gtest/gtest.h>

namespace {

const CheckedKernel kKernels[] = {
    {1, "BrightnessContrast", {{0, 3}, {-128, 127}, {-128, 127}}},
    {3, "ToneTable", {{0, 3}}, true},
    {4, "ColorReduction", {{0, 3}, {2, 128}}},
};

class Kernel : public testing::TestWithParam<CheckedKernel> {};

TEST_P(Kernel, GivesTheBytesRhythmAndDrawsOfItsReference) {
    OnFreshThread([] { CheckKernel(GetParam()); });
}

INSTANTIATE_TEST_SUITE_P(Every, Kernel, testing::ValuesIn(kKernels),
                         [](const auto& info) { return info.param.name; });

} // namespace

void PrintTo(const CheckedKernel& kernel, std::ostream* out) {
    *out << "effect " << kernel.id;
}

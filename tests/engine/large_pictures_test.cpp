// Every effect on pictures that are very wide or very high, where products of sizes overflow 32
// bits and sums of small errors show.
#include "tests/engine/kernel_check.h"
#include "tests/support/dib_maker.h"
#include "tests/support/engine_probe.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

struct Shape {
    ImageClass kind;
    i32 width;
    i32 height;
};

constexpr Shape kShapes[] = {{ImageClass::Grey, 3, 40000}, {ImageClass::Colour, 20000, 3}};
constexpr Shape kSixtyMegapixels[] = {{ImageClass::Colour, 3, 40000},
                                      {ImageClass::Colour, 20000, 3000}};
// References that add up windows take minutes on three channels.
constexpr Shape kSixtyGreyMegapixels[] = {{ImageClass::Colour, 3, 40000},
                                          {ImageClass::Grey, 20000, 3000}};

class LargePicture : public testing::TestWithParam<CheckedKernel> {
protected:
    static void Check(std::span<const Shape> shapes) {
        for (const Shape& shape : shapes) {
            const OwnedBlock picture =
                MakeDib(shape.kind, shape.width, shape.height, {.randomPadding = true});
            OnFreshThread([&] { CheckKernelOn(GetParam(), BytesOf(picture.Handle())); });
        }
    }
};

TEST_P(LargePicture, IsThatOfTheReference) {
    Check(kShapes);
    if (std::getenv("ZQ_LONG") != nullptr) {
        const bool isSlow = (GetParam().traits & kWindow) != 0;
        Check(isSlow ? std::span<const Shape>(kSixtyGreyMegapixels) : kSixtyMegapixels);
    }
}

INSTANTIATE_TEST_SUITE_P(Every, LargePicture, testing::ValuesIn(CheckedKernels()),
                         [](const auto& info) { return info.param.name; });

} // namespace

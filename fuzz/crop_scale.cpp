// Regions and targets of any size, on a DIB that may lie.
#include "image/crop_scale.h"
#include "fuzz/fuzz_target.h"

void RunOnBytes(FuzzedBytes bytes) {
    const FuzzRun run;
    OwnedBlock kept;
    const DibHandle source = TakeHandle(bytes, kept);
    const UnwrittenBlock unwritten(source);
    const FuzzedHooks hooks(bytes);
    // A place below 0 is not allowed.
    const i32 x = bytes.Number() & INT32_MAX;
    const i32 y = bytes.Number() & INT32_MAX;
    const i32 regionWidth = bytes.Number();
    const i32 regionHeight = bytes.Number();
    const i32 width = bytes.Number();
    const i32 height = bytes.Number();

    const OwnedBlock result(
        CropAndScaleDib(source, x, y, regionWidth, regionHeight, width, height));
    if (result) {
        const DibView view = RequireWellFormed(result.Handle());
        Require(view.width == width && view.height == height, "the result has the target's size");
    }
}

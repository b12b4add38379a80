// Every effect with any record on a DIB that may lie. All instruction sets give the same bytes.
#include "engine/vector/targets.h"
#include "fuzz/fuzz_target.h"
#include "platform/base/random_state.h"

#include <zq/engine.h>

namespace {

void RequireSameShape(DibHandle source, DibHandle result) {
    const BlockLock lock(source);
    DibView before;
    Require(ViewDib(lock.Bytes(), BlockSize(source), before), "only a DIB gives a picture");
    const DibView after = RequireWellFormed(result);
    Require(after.width == before.width && after.height == before.height &&
                after.bits == before.bits,
            "the result has the source's size and depth");
}

} // namespace

void RunOnBytes(FuzzedBytes bytes) {
    static const std::vector<i64> targets = VectorTargets();
    const FuzzRun run;
    const EffectId id = TakeEffect(bytes);
    const FuzzedRecord record = TakeRecord(bytes);
    OwnedBlock kept;
    const DibHandle source = TakeHandle(bytes, kept);
    const UnwrittenBlock unwritten(source);
    const FuzzedHooks hooks(bytes);
    const void* params = bytes.Rarely(6) ? nullptr : record.data();
    const i64 otherTarget = targets[bytes.Byte() % targets.size()];

    RandomState() = 1;
    const OwnedBlock result(RunEffect(source, id, params));
    if (result) {
        RequireSameShape(source, result.Handle());
    }
    hooks.Rearm();
    RandomState() = 1;
    UseVectorTarget(otherTarget);
    const OwnedBlock again(RunEffect(source, id, params));
    UseVectorTarget(0);
    Require(BytesOf(result.Handle()) == BytesOf(again.Handle()),
            "all instruction sets give the same bytes");
}

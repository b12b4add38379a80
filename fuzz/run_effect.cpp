// Every effect with any record on a DIB that may lie.
#include "fuzz/fuzz_target.h"

#include <zq/engine.h>

void RunOnBytes(FuzzedBytes bytes) {
    const FuzzRun run;
    const EffectId id = TakeEffect(bytes);
    const FuzzedRecord record = TakeRecord(bytes);
    OwnedBlock kept;
    const DibHandle source = TakeHandle(bytes, kept);
    const UnwrittenBlock unwritten(source);
    const FuzzedHooks hooks(bytes);

    const OwnedBlock result(RunEffect(source, id, bytes.Rarely(6) ? nullptr : record.data()));
    if (result) {
        const BlockLock lock(source);
        DibView before;
        Require(ViewDib(lock.Bytes(), BlockSize(source), before), "only a DIB gives a picture");
        const DibView after = RequireWellFormed(result.Handle());
        Require(after.width == before.width && after.height == before.height &&
                    after.bits == before.bits,
                "the result has the source's size and depth");
    }
}

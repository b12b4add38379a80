// Every effect on a layer by both roads; image and mask may lie and need not fit each other.
#include "fuzz/fuzz_target.h"
#include "image/masked_effect.h"

void RunOnBytes(FuzzedBytes bytes) {
    const FuzzRun run;
    const EffectId id = TakeEffect(bytes);
    const FuzzedRecord record = TakeRecord(bytes);
    OwnedBlock keptImage;
    OwnedBlock keptMask;
    LayerEntry before{};
    before.image = TakeHandle(bytes, keptImage);
    before.mask = TakeHandle(bytes, keptMask);
    const u8 flags = bytes.Byte();
    const u8 keepsOriginal = flags & 1;
    LayerEntry entry = before;
    if ((flags & 2) != 0) {
        entry.mask = entry.image; // a host may do that
    }
    {
        const FuzzedHooks hooks(bytes);
        ApplyEffectToLayer(&entry, id, record.data(), keepsOriginal, flags & 4);
    }
    if (entry.image != before.image) {
        RequireWellFormed(entry.image);
        Require((BlockSize(before.image) != 0) == (keepsOriginal != 0),
                "the image before is freed unless it is kept");
        FreeBlock(entry.image);
        FreeBlock(entry.mask);
    }
}

#include "engine/frame.h"

#include "engine/vector/stores.h"
#include "platform/base/unfilled_block.h"
#include "platform/escape_press.h"
#include "platform/win32.h"

#include <cstring>

namespace {

bool Takes(Depths depths, ImageClass imageClass) {
    switch (imageClass) {
    case ImageClass::None:
        return false;
    case ImageClass::Grey:
        return true;
    case ImageClass::Colour:
        return depths != Depths::AnyByte;
    case ImageClass::Palette8:
        return depths != Depths::GreyOrColour;
    case ImageClass::Palette4:
        return depths == Depths::PaletteAware || depths == Depths::PaletteAwareAndMono;
    case ImageClass::Mono:
        return depths == Depths::PaletteAwareAndMono;
    }
    return false;
}

// Shows the busy cursor as long as it lives, and the arrow afterwards.
class BusyCursorGuard {
public:
    explicit BusyCursorGuard(BusyCursor cursor) : shown_(cursor == BusyCursor::Shown) {
        Show(32514);
    }
    ~BusyCursorGuard() { Show(32512); }
    BusyCursorGuard(const BusyCursorGuard&) = delete;
    BusyCursorGuard& operator=(const BusyCursorGuard&) = delete;

private:
    void Show(WORD systemCursor) const {
        if (shown_) {
            SetCursor(LoadCursorA(nullptr, MAKEINTRESOURCEA(systemCursor)));
        }
    }

    const bool shown_;
};

// Kernels write every pixel but not what follows a row's last one; only when nothing does may the
// block hold something old.
DibHandle AllocateResult(const DibView& source) {
    return source.stride == source.rowBytes ? ZqHandleOfBlock(AllocateUnfilled(source.size))
                                            : AllocateBlock(source.size);
}

} // namespace

void KernelRun::CopyHeadWithoutAsking() const {
    std::memcpy(result_, source.block, source.head);
}

void KernelRun::CopyHead() const {
    CopyHeadWithoutAsking();
    ShouldAbort();
}

DibHandle RunKernelWork(DibHandle source, Depths depths, BusyCursor cursor, KernelWork work,
                        const void* closure) {
    BlockLock sourceLock(source);
    DibView view;
    if (!sourceLock || !ViewDib(sourceLock.Bytes(), BlockSize(source), view) ||
        !Takes(depths, view.imageClass)) {
        return 0;
    }
    const BusyCursorGuard busy(cursor);
    OwnedBlock result(AllocateResult(view));
    BlockLock resultLock(result.Handle());
    if (!resultLock) {
        return 0;
    }
    const WorkEnd end = work(KernelRun(view, resultLock.Bytes()), closure);
    FinishStores();
    sourceLock.Release();
    resultLock.Release();
    if (end == WorkEnd::NoMemory) {
        return 0;
    }
    if (end == WorkEnd::Stopped) {
        result = OwnedBlock();
        if (abortHook == nullptr) {
            DropEscapePress();
        }
    }
    if (end != WorkEnd::DoneInSilence) {
        ReportProgress(100);
    }
    return result.HandOver();
}

// Documents that lie through the wiring of a dialog's panes, and what a user and a host may do
// while the dialog is open.
#include "fuzz/fuzz_target.h"
#include "platform/base/module.h"
#include "platform/qt/graphics_testing.h"
#include "platform/qt/window_testing.h"
#include "preview/preview_control.h"
#include "preview/wiring.h"

#include <QCoreApplication>
#include <QEvent>

#include <cstdlib>

namespace {

constexpr HINSTANCE__ kModule{nullptr, 0};
constexpr char kDialogClass[] = "FuzzedDialog";
constexpr i32 kMostLayers = 3;
constexpr int kMostDeeds = 16;

bool RegisterClasses() {
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    WNDCLASSEXA dialogClass{};
    dialogClass.cbSize = sizeof dialogClass;
    dialogClass.lpfnWndProc = DefWindowProcA;
    dialogClass.hInstance = &kModule;
    dialogClass.lpszClassName = kDialogClass;
    return RegisterClassExA(&dialogClass) != 0 && RegisterPreviewClasses(&kModule);
}

// Windows and drawing objects that were there before, and no others, are there at the end.
class WindowCounts {
public:
    WindowCounts() : windows_(LiveWindowCount()), objects_(LiveGdiObjectCount()) {}
    ~WindowCounts() {
        Require(LiveWindowCount() == windows_, "as many windows live as before");
        Require(LiveGdiObjectCount() == objects_, "as many drawing objects live as before");
    }
    WindowCounts(const WindowCounts&) = delete;
    WindowCounts& operator=(const WindowCounts&) = delete;

private:
    std::size_t windows_;
    std::size_t objects_;
};

// Handles what waits at its end, deletions too, for no loop does it here.
class PendingEvents {
public:
    PendingEvents() = default;
    ~PendingEvents() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    PendingEvents(const PendingEvents&) = delete;
    PendingEvents& operator=(const PendingEvents&) = delete;
};

// ---- The host's document ------------------------------------------------------------------------

class HostDocument {
public:
    explicit HostDocument(FuzzedBytes& bytes) : block_(AllocateBlock(TakeSize(bytes))) {
        ImageDocument document{};
        document.width = bytes.Number();
        document.height = bytes.Number();
        document.bitDepth = bytes.Rarely() ? 8 : bytes.Number();
        document.layerCount = bytes.Rarely(2) ? bytes.Number() : kMostLayers;
        document.currentLayer = bytes.Rarely(2) ? bytes.Number() : bytes.Byte() % kMostLayers;
        document.selectionActive = bytes.Byte() % 2;
        for (i32 i = 0; i < kMostLayers && !bytes.AtEnd(); ++i) {
            FillLayer(bytes, document.layers[i], kept_[2 * i], kept_[2 * i + 1]);
        }
        Write(document);
    }

    DocHandle Handle() const { return block_.Handle(); }

    // A host that changes its mind while the dialog is open.
    void Spoil(FuzzedBytes& bytes) {
        const u8 deed = bytes.Byte();
        OwnedBlock& kept = kept_[deed / 4 % std::size(kept_)];
        switch (deed % 4) {
        case 0:
            kept = OwnedBlock();
            break;
        case 1:
            block_ = OwnedBlock();
            break;
        default: {
            const BlockLock lock(kept.Handle());
            const std::size_t size = std::min<std::size_t>(BlockSize(kept.Handle()), 40);
            if (lock && size > 0) {
                lock.Bytes()[bytes.Byte() % size] = bytes.Byte();
            }
        }
        }
    }

private:
    static std::size_t TakeSize(FuzzedBytes& bytes) {
        return bytes.Rarely(4) ? bytes.Raw<u16>() : sizeof(ImageDocument);
    }

    static void FillLayer(FuzzedBytes& bytes, LayerEntry& layer, OwnedBlock& image,
                          OwnedBlock& mask) {
        layer.image = TakeHandle(bytes, image);
        switch (bytes.Byte() % 4) {
        case 0:
            layer.mask = TakeHandle(bytes, mask);
            break;
        case 1:
            layer.mask = layer.image;
            break;
        default:
            mask = MaskFor(layer.image);
            layer.mask = mask.Handle();
        }
        layer.left = bytes.Number();
        layer.top = bytes.Number();
        layer.maskBypass = bytes.Byte() % 4;
    }

    // A mask that fits, so that most documents get as far as a picture.
    static OwnedBlock MaskFor(DibHandle image) {
        const BlockLock imageLock(image);
        DibView view;
        if (!ViewDib(imageLock.Bytes(), BlockSize(image), view)) {
            return OwnedBlock();
        }
        constexpr std::size_t kHead = kDibHeaderBytes + kGreyPaletteEntries * kPaletteEntryBytes;
        const u64 pixels =
            RowStride(static_cast<u32>(view.width), 8) * static_cast<u32>(view.height);
        OwnedBlock mask(AllocateBlock(kHead + pixels));
        const BlockLock lock(mask.Handle());
        if (lock) {
            auto& header = *reinterpret_cast<DibHeader*>(lock.Bytes());
            header.biSize = 40;
            header.biWidth = view.width;
            header.biHeight = view.height;
            header.biBitCount = 8;
            header.biClrUsed = kGreyPaletteEntries;
            for (std::size_t i = 0; i < kGreyPaletteEntries * kPaletteEntryBytes; ++i) {
                lock.Bytes()[kDibHeaderBytes + i] = static_cast<u8>(i % 4 == 3 ? 0 : i / 4);
            }
            std::memset(lock.Bytes() + kHead, 200, static_cast<std::size_t>(pixels));
        }
        return mask;
    }

    void Write(const ImageDocument& document) const {
        const BlockLock lock(block_.Handle());
        if (lock) {
            std::memcpy(lock.Bytes(), &document,
                        std::min(sizeof document, BlockSize(block_.Handle())));
        }
    }

    OwnedBlock block_;
    OwnedBlock kept_[2 * kMostLayers];
};

// ---- The dialog ---------------------------------------------------------------------------------

class Dialog {
public:
    Dialog()
        : window_(CreateWindowExA(0, kDialogClass, "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300,
                                  nullptr, nullptr, &kModule, nullptr)),
          panes_{MakePane(kBeforePaneId), MakePane(kAfterPaneId)} {}
    ~Dialog() { DestroyWindow(window_); }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    HWND Window() const { return window_; }

    // One thing that a user, a dialog or the clock does to a pane.
    void Do(FuzzedBytes& bytes, void* record) {
        const u8 deed = bytes.Byte();
        const HWND pane = panes_[deed / 8 % 2];
        PreviewControl& control = *PreviewControlOf(pane);
        switch (deed % 8) {
        case 0:
            SendMessageA(pane, kParamsChangedMessage, 0, reinterpret_cast<LPARAM>(record));
            [[fallthrough]];
        case 1:
            SendMessageA(pane, WM_TIMER, kPreviewTimer, 0);
            break;
        case 2:
            SetZoomPercent(control, bytes.Number());
            break;
        case 3:
            SendMessageA(pane, WM_COMMAND, MAKEWPARAM(deed < 128 ? kZoomInId : kZoomOutId, 0), 0);
            break;
        case 4:
            PanRegion(control, bytes.Number(), bytes.Number());
            break;
        case 5:
            InvalidateRect(control.imageWindow, nullptr, FALSE);
            UpdateWindow(control.imageWindow);
            break;
        case 6:
            FitRegion(control);
            break;
        default:
            SetWindowPos(pane, nullptr, 0, 0, bytes.Byte(), bytes.Byte(), SWP_NOZORDER);
        }
    }

private:
    HWND MakePane(int id) const {
        return CreateWindowExA(0, kPreviewClass, "", WS_CHILD | WS_VISIBLE, 0, 0, 94, 114, window_,
                               reinterpret_cast<HMENU>(static_cast<std::uintptr_t>(id)), &kModule,
                               nullptr);
    }

    const HWND window_;
    const HWND panes_[2];
};

} // namespace

void RunOnBytes(FuzzedBytes bytes) {
    static const bool registered = RegisterClasses();
    Require(registered, "the classes can be registered");
    const FuzzRun run;
    const WindowCounts counts;
    const PendingEvents pending;
    const EffectId id = TakeEffect(bytes);
    FuzzedRecord record = TakeRecord(bytes);
    HostDocument document(bytes);
    DocHandle context[] = {document.Handle(), document.Handle()};
    Dialog dialog;
    const FuzzedHooks hooks(bytes);
    {
        const UnwrittenBlock unwritten(document.Handle());
        WirePreviews(dialog.Window(), context, id);
        for (int deeds = 0; deeds < kMostDeeds && !bytes.AtEnd(); ++deeds) {
            dialog.Do(bytes, record.data());
        }
    }
    document.Spoil(bytes);
    for (int deeds = 0; deeds < kMostDeeds && !bytes.AtEnd(); ++deeds) {
        dialog.Do(bytes, record.data());
    }
}

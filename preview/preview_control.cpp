#include "preview/preview_control.h"

#include "image/document.h"
#include "image/masked_effect.h"
#include "preview/effect_scaling.h"
#include "preview/preview_document.h"
#include "preview/zoom_ladder.h"
#include "rkdll/rkdll.h"

namespace {

// What the visible region depends on.
struct View {
    Extent pane;
    Extent image;
};

// The size of the image window; empty when there is no room.
Extent PaneSize(const PreviewControl& control) {
    RECT client{};
    GetClientRect(control.imageWindow, &client);
    return {static_cast<i32>(client.right), static_cast<i32>(client.bottom)};
}

bool ViewOf(const PreviewControl& control, View& view) {
    view.pane = PaneSize(control);
    return !view.pane.IsEmpty() && CurrentImageSize(control.document, view.image);
}

void RebuildAndMark(PreviewControl& control) {
    if (RebuildPreviewDocument(control)) {
        control.dirty = 1;
    }
}

// Kernels leave the arrow behind; this brings back the cursor that was there before.
class CursorGuard {
public:
    CursorGuard() : cursor_(GetCursor()) {}
    ~CursorGuard() { SetCursor(cursor_); }
    CursorGuard(const CursorGuard&) = delete;
    CursorGuard& operator=(const CursorGuard&) = delete;

private:
    const HCURSOR cursor_;
};

} // namespace

PreviewControl* PreviewControlOf(HWND window) {
    return reinterpret_cast<PreviewControl*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

i32 AttachDocument(PreviewControl& control, DocHandle document, i32 isAfter, EffectId id) {
    control.document = document;
    control.isAfter = isAfter;
    control.effectId = id;
    SetWindowLongPtrA(control.imageWindow, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&control));
    FitRegion(control);
    RebuildPreviewDocument(control);
    return 1;
}

void SetPeer(PreviewControl& control, PreviewControl* other) {
    control.peer = other;
}

void ShowZoomControls(PreviewControl& control, i32 shown) {
    control.zoomControlsShown = shown;
    SendMessageA(control.window, WM_SIZE, 0, 0);
}

void FitRegion(PreviewControl& control) {
    View view;
    if (!ViewOf(control, view)) {
        return;
    }
    const FittedView fitted = FitView(view.pane, view.image);
    control.zoomPercent = control.minZoomPercent = fitted.zoomPercent;
    control.region = fitted.region;
}

void SetZoomPercent(PreviewControl& control, i32 percent) {
    View view;
    if (percent < control.minZoomPercent || percent > kLargestZoom || !ViewOf(control, view)) {
        return;
    }
    control.region = ZoomedRegion(control.region, percent, view.pane, view.image);
    control.zoomPercent = percent;
    RebuildAndMark(control);
    InvalidateRect(control.window, nullptr, FALSE);
}

void PanRegion(PreviewControl& control, i32 dx, i32 dy) {
    Extent image;
    if (control.panAllowed == 0 || !CurrentImageSize(control.document, image)) {
        return;
    }
    const ViewRegion moved = PannedRegion(control.region, dx, dy, control.zoomPercent, image);
    if (moved == control.region) {
        return;
    }
    control.region = moved;
    RebuildAndMark(control);
}

bool RebuildPreviewDocument(PreviewControl& control) {
    const DocHandle fresh = MakePreviewDocument(control.document, control.region,
                                                control.zoomPercent, PaneSize(control));
    if (fresh == 0) {
        return false;
    }
    if (control.previewDocument != 0) {
        RkImageDelete(control.previewDocument);
    }
    control.previewDocument = fresh;
    InvalidateRect(control.imageWindow, nullptr, FALSE);
    return true;
}

bool ApplyPreviewEffect(PreviewControl& control) {
    if (control.isAfter == 0 || control.params == nullptr) {
        return false;
    }
    LayerEntry* entry = LockLayerEntry(control.previewDocument, 0);
    if (entry == nullptr) {
        return false;
    }
    const ScaledRecord scaled(control.params, control.effectId, control.zoomPercent);
    const CursorGuard cursor;
    const u8 applied = ApplyEffectToLayer(entry, control.effectId, control.params, 0,
                                          entry->maskBypass == 1 ? 1 : 0);
    UnlockDocument(control.previewDocument);
    return applied == 1;
}

// The preview control: one pane of a dialog, Before or After.
//
// A pane never draws the host's document. It keeps a small document of its own, the visible region
// of the current layer at the pane's zoom, and an After pane runs the dialog's effect on that. The
// effect runs at the tick of a timer and never while a control is being moved.
#pragma once

#include "platform/types.h"
#include "platform/win32.h"
#include "preview/view_region.h"
#include <zq/document.h>

constexpr char kPreviewClass[] = "previewwnd";
constexpr char kMiniPreviewClass[] = "KV MiniPreview Window";
constexpr char kImageClass[] = "SubPreviewWnd";

// Control ids of the panes in a dialog and of the zoom buttons in a pane.
constexpr int kBeforePaneId = 4327;
constexpr int kAfterPaneId = 4328;
constexpr int kZoomInId = 10000;
constexpr int kZoomOutId = 10001;

// To an After pane: wParam 0, lParam the address of the effect's record.
constexpr UINT kParamsChangedMessage = 1296;
// From an image window to its pane: wParam as in the mouse message, lParam dx and dy of the drag.
constexpr UINT kPanMessage = 1297;

constexpr UINT_PTR kPreviewTimer = 100;
constexpr UINT kPreviewTimerMilliseconds = 1000;

// One per `previewwnd` window, in the window's user word.
struct PreviewControl {
    HWND window = nullptr;
    HWND imageWindow = nullptr;    // child in which the picture is shown
    DocHandle document = 0;        // the host's, only read; 0 until attached
    DocHandle previewDocument = 0; // owned; 0 until first built
    EffectId effectId = 0;
    // The record that the dialog last announced. It stays the dialog's, valid and at its place as
    // long as the dialog lives.
    void* params = nullptr;
    i32 zoomPercent = 100;
    i32 minZoomPercent = 100; // the zoom at which the whole image fits
    ViewRegion region = {};   // the visible part of the current layer's image
    i32 isAfter = 0;
    i32 ownedByWindow = 1; // the window frees the object when it is destroyed
    i32 dirty = 0;         // the next tick rebuilds and applies
    PreviewControl* peer = nullptr;
    i32 zoomControlsShown = 1;
    i32 panAllowed = 1;
};

// Registers the window classes for `instance`, which holds the open hand's cursor. False as soon as
// one of them cannot be registered.
bool RegisterPreviewClasses(HINSTANCE instance);

// The object in a window's user word; null without one.
PreviewControl* PreviewControlOf(HWND window);

// Shows a document's current layer as a whole. Gives 1.
i32 AttachDocument(PreviewControl& control, DocHandle document, i32 isAfter, EffectId id);
void SetPeer(PreviewControl& control, PreviewControl* other);
// Shows or hides the zoom buttons and lays the pane out anew.
void ShowZoomControls(PreviewControl& control, i32 shown);

// These do nothing, and give false, without a document whose current layer has an image and a mask
// and without room in the pane.

// Goes to the zoom at which the whole image fits. The preview document is left as it is.
void FitRegion(PreviewControl& control);
// Zooms about the centre. Nothing happens below the fitting zoom or above 100.
void SetZoomPercent(PreviewControl& control, i32 percent);
// Moves the region by a drag of the picture in screen pixels, y downward.
void PanRegion(PreviewControl& control, i32 dx, i32 dy);
// Replaces the preview document by a fresh, untouched crop. On failure the old one stays.
bool RebuildPreviewDocument(PreviewControl& control);
// Runs the effect on the preview document of an After pane. True if it ran.
bool ApplyPreviewEffect(PreviewControl& control);

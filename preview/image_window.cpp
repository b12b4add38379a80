#include "preview/image_window.h"

#include "engine/block.h"
#include "image/dib.h"
#include "preview/background.h"
#include "preview/preview_control.h"
#include "rkdll/rkdll.h"

#include <algorithm>

namespace {

// ---- Painting -----------------------------------------------------------------------------------

OwnedBlock RenderPreview(const PreviewControl* control) {
    if (control == nullptr || control->previewDocument == 0) {
        return OwnedBlock();
    }
    const RkBackground background{backgroundWord0, backgroundWord1, backgroundWord2};
    return OwnedBlock(RkImageCropToDib(control->previewDocument, -1, 0, &background));
}

// Fills what lies around the picture, but for a ring of one pixel, which is left as it was.
void FillSurroundings(HDC dc, const RECT& client, const RECT& picture) {
    const RECT strips[] = {
        {client.left, client.top, picture.left - 1, client.bottom},
        {client.left, client.top, client.right, picture.top - 1},
        {picture.right + 1, client.top, client.right, client.bottom},
        {client.left, picture.bottom + 1, client.right, client.bottom},
    };
    const HBRUSH lightGrey = static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH));
    for (const RECT& strip : strips) {
        if (IsRectEmpty(&strip) == 0) {
            FillRect(dc, &strip, lightGrey);
        }
    }
}

void DrawCentred(HDC dc, const RECT& client, DibHandle dib) {
    i32 width = 0;
    i32 height = 0;
    if (GetDibSize(dib, &width, &height) == 0) {
        return;
    }
    RECT picture;
    picture.left = std::max<LONG>((client.right - client.left - width) / 2, 0);
    picture.top = std::max<LONG>((client.bottom - client.top - height) / 2, 0);
    picture.right = picture.left + width;
    picture.bottom = picture.top + height;
    FillSurroundings(dc, client, picture);
    RkDibDisplay(dc, &picture, dib, 0, 0, 0);
}

// Without a picture the pass ends with nothing drawn, so that the window counts as painted.
void PaintImage(HWND window) {
    const OwnedBlock dib = RenderPreview(PreviewControlOf(window));
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    RECT client;
    if (dib && GetClientRect(window, &client) != 0) {
        DrawCentred(dc, client, dib.Handle());
    }
    EndPaint(window, &paint);
}

// ---- Dragging -----------------------------------------------------------------------------------

// One for all image windows: a mouse drags one of them at a time.
u8 dragActive = 0;
i32 dragLastX = 0;
i32 dragLastY = 0;

i32 MouseX(LPARAM position) {
    return static_cast<i16>(LOWORD(position));
}

i32 MouseY(LPARAM position) {
    return static_cast<i16>(HIWORD(position));
}

void StartDrag(HWND window, LPARAM position) {
    dragLastX = MouseX(position);
    dragLastY = MouseY(position);
    dragActive = 1;
    SetCapture(window);
}

void ContinueDrag(HWND window, WPARAM buttons, LPARAM position) {
    const i32 dx = MouseX(position) - dragLastX;
    const i32 dy = MouseY(position) - dragLastY;
    dragLastX = MouseX(position);
    dragLastY = MouseY(position);
    SendMessageA(GetParent(window), kPanMessage, buttons, MAKELPARAM(dx, dy));
}

void EndDrag() {
    ReleaseCapture();
    dragActive = 0;
}

} // namespace

LRESULT CALLBACK ImageProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        PaintImage(window);
        return 0;
    case WM_LBUTTONDOWN:
        StartDrag(window, lParam);
        break;
    case WM_MOUSEMOVE:
        if (dragActive != 0) {
            ContinueDrag(window, wParam, lParam);
        }
        break;
    case WM_LBUTTONUP:
        EndDrag();
        break;
    case WM_DESTROY:
        dragActive = 0; // a dialog may close in the middle of a drag
        break;
    default:
        break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

#include "preview/control_window.h"

#include "preview/preview_control.h"
#include "preview/zoom_ladder.h"
#include "rkdll/rkdll.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>

namespace {

constexpr DWORD kImageStyle = WS_CHILD | WS_VISIBLE | WS_BORDER;
constexpr DWORD kZoomButtonStyle = WS_CHILD | WS_VISIBLE | BS_OWNERDRAW;
constexpr int kZoomButtonWidth = 16;
constexpr int kLabelWidth = 44;
constexpr UINT kCentredLine = DT_SINGLELINE | DT_VCENTER | DT_CENTER;

// ---- Life ---------------------------------------------------------------------------------------

HWND CreateChild(const CREATESTRUCTA& creation, HWND parent, const char* windowClass,
                 const char* text, DWORD style, int id) {
    const HWND child = CreateWindowExA(0, windowClass, text, style, 4, 4, 50, 50, parent,
                                       reinterpret_cast<HMENU>(static_cast<std::uintptr_t>(id)),
                                       creation.hInstance, nullptr);
    ShowWindow(child, SW_SHOW);
    return child;
}

// False when there is no memory for the object.
bool CreatePane(HWND window, const CREATESTRUCTA& creation) {
    auto* control = static_cast<PreviewControl*>(creation.lpCreateParams);
    if (control == nullptr) {
        control = new (std::nothrow) PreviewControl;
    }
    if (control == nullptr) {
        return false;
    }
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(control));
    control->window = window;
    control->imageWindow = CreateChild(creation, window, kImageClass, "", kImageStyle, 0);
    CreateChild(creation, window, "BUTTON", "+", kZoomButtonStyle, kZoomInId);
    CreateChild(creation, window, "BUTTON", "-", kZoomButtonStyle, kZoomOutId);
    SetTimer(window, kPreviewTimer, kPreviewTimerMilliseconds, nullptr);
    return true;
}

void DestroyPane(PreviewControl& control) {
    const HWND window = control.window;
    KillTimer(window, kPreviewTimer);
    SetWindowLongPtrA(window, GWLP_USERDATA, 0);
    // Nobody is left with the address of an object that goes.
    SetWindowLongPtrA(control.imageWindow, GWLP_USERDATA, 0);
    if (control.peer != nullptr && control.peer->peer == &control) {
        control.peer->peer = nullptr;
    }
    if (control.ownedByWindow == 0) {
        return;
    }
    if (control.previewDocument != 0) {
        RkImageDelete(control.previewDocument);
    }
    delete &control;
}

// ---- Layout -------------------------------------------------------------------------------------

void Place(HWND child, int x, int y, int width, int height) {
    SetWindowPos(child, nullptr, x, y, std::max(width, 0), std::max(height, 0),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// The picture has the same size with and without the zoom buttons under it.
void LayOut(const PreviewControl& control) {
    RECT client;
    if (GetClientRect(control.window, &client) == 0) {
        return;
    }
    const int left = static_cast<int>(client.left);
    const int top = static_cast<int>(client.top);
    const int right = static_cast<int>(client.right);
    const int bottom = static_cast<int>(client.bottom);
    const int split = static_cast<int>(0.84 * bottom + 0.16 * top);
    const HWND zoomIn = GetDlgItem(control.window, kZoomInId);
    const HWND zoomOut = GetDlgItem(control.window, kZoomOutId);
    const bool zoomShown = control.zoomControlsShown != 0;

    Place(control.imageWindow, left + 2, top + (zoomShown ? 2 : 8), right - left - 4,
          split - top - 4);
    if (zoomShown) {
        Place(zoomIn, (left + right - kLabelWidth) / 2 - kZoomButtonWidth, split, kZoomButtonWidth,
              bottom - split);
        Place(zoomOut, (left + right + kLabelWidth + 2) / 2, split, kZoomButtonWidth,
              bottom - split);
    }
    ShowWindow(zoomIn, zoomShown ? SW_SHOW : SW_HIDE);
    ShowWindow(zoomOut, zoomShown ? SW_SHOW : SW_HIDE);
    InvalidateRect(control.window, nullptr, TRUE); // the label has moved
}

// ---- Painting -----------------------------------------------------------------------------------

// The label's font, selected into a device context as long as this lives.
class LabelFont {
public:
    explicit LabelFont(HDC dc) : dc_(dc) {
        LOGFONTA description{};
        description.lfHeight = -12;
        description.lfWeight = 400;
        std::strcpy(description.lfFaceName, "MS Sans Serif");
        font_ = CreateFontIndirectA(&description);
        before_ = SelectObject(dc_, font_);
    }
    ~LabelFont() {
        SelectObject(dc_, before_);
        DeleteObject(font_);
    }
    LabelFont(const LabelFont&) = delete;
    LabelFont& operator=(const LabelFont&) = delete;

private:
    HDC dc_;
    HFONT font_;
    HGDIOBJ before_;
};

// The room under the image window, in the pane's client coordinates.
RECT LabelRectangle(const PreviewControl& control) {
    RECT image{};
    RECT client{};
    GetWindowRect(control.imageWindow, &image);
    GetClientRect(control.window, &client);
    POINT topLeft{image.left, image.top};
    POINT bottomRight{image.right, image.bottom};
    ScreenToClient(control.window, &topLeft);
    ScreenToClient(control.window, &bottomRight);
    const LONG left = (topLeft.x + bottomRight.x - kLabelWidth) / 2;
    return {left, bottomRight.y + 1, left + kLabelWidth, client.bottom};
}

void PaintPercentLabel(const PreviewControl& control) {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(control.window, &paint);
    RECT label = LabelRectangle(control);
    FillRect(dc, &label, SystemColourBrush(COLOR_BTNFACE));
    char text[16];
    std::snprintf(text, sizeof(text), "%d%%", control.zoomPercent);
    {
        const LabelFont font(dc);
        SetBkMode(dc, TRANSPARENT);
        DrawTextA(dc, text, -1, &label, kCentredLine);
    }
    EndPaint(control.window, &paint);
}

void DrawZoomButton(const DRAWITEMSTRUCT& item) {
    RECT rectangle = item.rcItem;
    // A change of state comes without erasing, and text drawn over itself grows fat.
    FillRect(item.hDC, &rectangle, SystemColourBrush(COLOR_BTNFACE));
    SetBkMode(item.hDC, TRANSPARENT);
    DrawTextA(item.hDC, item.CtlID == static_cast<UINT>(kZoomInId) ? "+" : "-", -1, &rectangle,
              kCentredLine);
    DrawEdge(item.hDC, &rectangle, (item.itemState & ODS_SELECTED) != 0 ? EDGE_SUNKEN : EDGE_RAISED,
             BF_RECT);
}

// ---- What a user and a dialog do ----------------------------------------------------------------

void ZoomBoth(PreviewControl& control, i32 direction) {
    const i32 percent = ZoomStep(control.zoomPercent, direction);
    SetZoomPercent(control, percent);
    if (control.peer != nullptr) {
        SetZoomPercent(*control.peer, percent);
    }
}

void PressZoomButton(PreviewControl& control, int id) {
    if (id == kZoomInId && control.zoomPercent < kLargestZoom) {
        ZoomBoth(control, kZoomUp);
    }
    if (id == kZoomOutId && control.zoomPercent > control.minZoomPercent) {
        ZoomBoth(control, kZoomDown);
    }
}

void PanBoth(PreviewControl& control, LPARAM drag) {
    const i32 dx = static_cast<i16>(LOWORD(drag));
    const i32 dy = static_cast<i16>(HIWORD(drag));
    PanRegion(control, dx, dy);
    if (control.peer != nullptr) {
        PanRegion(*control.peer, dx, dy);
    }
}

void Tick(PreviewControl& control) {
    if (control.dirty == 0) {
        return;
    }
    // Taken back first, so that a tick that comes while the kernel runs starts no second one.
    control.dirty = 0;
    // Only a fresh crop may get the effect: the old picture may have it already.
    if (RebuildPreviewDocument(control) && ApplyPreviewEffect(control)) {
        InvalidateRect(control.imageWindow, nullptr, FALSE);
    }
}

} // namespace

LRESULT CALLBACK PreviewProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CREATE) {
        return CreatePane(window, *reinterpret_cast<const CREATESTRUCTA*>(lParam))
                   ? DefWindowProcA(window, message, wParam, lParam)
                   : -1;
    }
    PreviewControl* control = PreviewControlOf(window);
    if (control == nullptr) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    switch (message) {
    case WM_DESTROY:
        DestroyPane(*control);
        break;
    case WM_SIZE:
        LayOut(*control);
        break;
    case WM_PAINT:
        PaintPercentLabel(*control);
        return 0;
    case WM_DRAWITEM:
        DrawZoomButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return 0;
    case WM_COMMAND:
        PressZoomButton(*control, LOWORD(wParam));
        break;
    case WM_TIMER:
        Tick(*control);
        break;
    case kParamsChangedMessage:
        control->dirty = 1;
        control->params = reinterpret_cast<void*>(lParam);
        break;
    case kPanMessage:
        PanBoth(*control, lParam);
        break;
    default:
        break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

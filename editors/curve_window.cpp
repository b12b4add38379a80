#include "editors/curve_window.h"

#include "editors/selected_object.h"
#include "resources/resource.h"

#include <algorithm>

namespace {

// Where the pen was last, in whichever window.
CurvePoint lastPoint{};

EditedCurve* CurveOf(HWND window) {
    return reinterpret_cast<EditedCurve*>(GetWindowLongPtrA(window, GWLP_USERDATA));
}

SIZE ClientSize(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

void PaintCurve(HDC dc, const Curve& curve, SIZE client) {
    const int width = client.cx - 2;
    const int height = client.cy - 2;
    const ThinPen black(dc, 0);
    for (int i = 0; i < 256; ++i) {
        const int x = i * width / 255 + 1;
        const int y = height - curve[static_cast<std::size_t>(i)] * height / 255 + 1;
        if (i == 0) {
            MoveToEx(dc, x, y, nullptr);
        } else {
            LineTo(dc, x, y);
        }
    }
}

void Clear(HDC dc, SIZE client) {
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    const OwnedObject brush(CreateSolidBrush(face));
    const SelectedObject selected(dc, brush.Get());
    const ThinPen pen(dc, face);
    Rectangle(dc, 0, 0, client.cx, client.cy);
}

void Paint(HWND window) {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    if (const EditedCurve* edited = CurveOf(window); edited != nullptr && dc != nullptr) {
        PaintCurve(dc, edited->curve, ClientSize(window));
    }
    EndPaint(window, &paint);
}

void Show(HWND window, const Curve& curve) {
    const HDC dc = GetDC(window);
    if (dc == nullptr) {
        return;
    }
    const SIZE client = ClientSize(window);
    Clear(dc, client);
    PaintCurve(dc, curve, client);
    ReleaseDC(window, dc);
}

void MovePen(HWND window, LPARAM place, bool begins) {
    EditedCurve* edited = CurveOf(window);
    const SIZE client = ClientSize(window);
    const auto point = CurvePointAt(static_cast<i16>(LOWORD(place)),
                                    static_cast<i16>(HIWORD(place)), client.cx, client.cy);
    if (edited == nullptr || !point) {
        return;
    }
    ContinueStroke(edited->curve, begins ? *point : lastPoint, *point);
    lastPoint = *point;
    std::ranges::copy(edited->curve, edited->copy.begin());
    Show(window, edited->curve);
}

void TellParent(HWND window) {
    SendMessageA(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), kCurveDrawn),
                 reinterpret_cast<LPARAM>(window));
}

LRESULT CALLBACK CurveWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint(window);
        return 0;
    case WM_LBUTTONDOWN:
        MovePen(window, lParam, true);
        return 0;
    case WM_MOUSEMOVE:
        if ((wParam & MK_LBUTTON) != 0) {
            MovePen(window, lParam, false);
        }
        return 0;
    case WM_LBUTTONUP:
        TellParent(window);
        break;
    default:
        break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

void RegisterCurveWindow(HINSTANCE instance) {
    WNDCLASSEXA windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.style = CS_VREDRAW | CS_HREDRAW;
    windowClass.lpfnWndProc = CurveWindowProc;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorA(instance, MAKEINTRESOURCEA(IDR_PENCIL));
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(std::uintptr_t{COLOR_BTNFACE + 1});
    windowClass.lpszClassName = kCurveWindowClass;
    RegisterClassExA(&windowClass);
}

void UnregisterCurveWindow(HINSTANCE instance) {
    UnregisterClassA(kCurveWindowClass, instance);
}

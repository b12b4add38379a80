#include "editors/super_window.h"

#include "editors/selected_object.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>

namespace {

constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kLightGrey = 0xC0C0C0;
constexpr COLORREF kGrey = 0x808080;
constexpr COLORREF kBlack = 0;

struct Painting {
    HWND window;
    HDC dc;
    DWORD style;
    RECT client;
    int margin;
};

int MarginOf(DWORD style, const RECT& client) {
    return (style & kSuperMargin) == 0 ? 0 : std::min<int>(client.bottom / 10 + 1, 8);
}

void Fill(const Painting& painting) {
    const ThinPen pen(painting.dc, kLightGrey);
    const SelectedObject brush(painting.dc, GetStockObject(LTGRAY_BRUSH));
    const RECT& client = painting.client;
    Rectangle(painting.dc, client.left, client.top, client.right, client.bottom);
}

void DrawLines(HDC dc, COLORREF color, std::initializer_list<POINT> points) {
    const ThinPen pen(dc, color);
    MoveToEx(dc, points.begin()->x, points.begin()->y, nullptr);
    for (const POINT& point : points) {
        LineTo(dc, point.x, point.y);
    }
}

void DrawFrame(const Painting& painting) {
    if ((painting.style & kSuperFrameMask) != kSuperFrameRaised) {
        return;
    }
    const LONG left = painting.client.left + 2 * painting.margin;
    const LONG top = painting.client.top + painting.margin;
    const LONG right = painting.client.right - 2 * painting.margin - 1;
    const LONG bottom = painting.client.bottom - painting.margin - 1;
    DrawLines(painting.dc, kGrey, {{left, bottom}, {right, bottom}, {right, top - 1}});
    DrawLines(painting.dc, kWhite, {{left, bottom - 1}, {left, top}, {right, top}});
}

// Null where the parent's font is to be taken.
HFONT MakeTextFont(DWORD style) {
    LOGFONTA description{};
    switch (style & kSuperTextHeightMask) {
    case kSuperText14:
        description.lfHeight = 14;
        break;
    case kSuperText20:
        description.lfHeight = 20;
        break;
    case kSuperText40:
        description.lfHeight = 40;
        break;
    default:
        return nullptr;
    }
    description.lfWeight = 400;
    std::strcpy(description.lfFaceName, "Arial");
    return CreateFontIndirectA(&description);
}

struct TextPlace {
    UINT align;
    int x;
    int y;
};

TextPlace PlaceOfText(const Painting& painting) {
    constexpr int kGap = 2;
    const RECT& client = painting.client;
    const int aside = 2 * painting.margin + kGap;
    const int top = client.top + painting.margin + kGap;
    const int bottom = client.bottom - painting.margin - kGap;
    const int centre = (client.left + client.right) / 2;
    switch (painting.style & kSuperTextPlaceMask) {
    case kSuperTextRightTop:
        return {TA_RIGHT | TA_TOP, client.right - aside, top};
    case kSuperTextCentreTop:
        return {TA_CENTER | TA_TOP, centre, top};
    case kSuperTextCentreBottom:
        return {TA_CENTER | TA_BOTTOM, centre, bottom};
    default:
        return {TA_LEFT | TA_TOP, client.left + aside, top};
    }
}

// The text stands between blanks: two in front of it, and one behind.
struct PaddedText {
    static constexpr int kLongest = 118;
    char letters[kLongest + 4] = "  ";
    int length;

    explicit PaddedText(HWND window)
        : length(GetWindowTextA(window, letters + 2, kLongest + 1) + 3) {
        letters[length - 1] = ' ';
    }
};

void DrawCaption(const Painting& painting) {
    const OwnedObject made(MakeTextFont(painting.style));
    const LRESULT parentsFont = SendMessageA(GetParent(painting.window), WM_GETFONT, 0, 0);
    const SelectedObject font(
        painting.dc, made.Get() != nullptr ? made.Get() : reinterpret_cast<HGDIOBJ>(parentsFont));
    const PaddedText text(painting.window);
    const TextPlace place = PlaceOfText(painting);
    SetTextAlign(painting.dc, place.align);
    SetBkMode(painting.dc, TRANSPARENT);
    const auto draw = [&](COLORREF color, int dx, int dy) {
        SetTextColor(painting.dc, color);
        TextOutA(painting.dc, place.x + dx, place.y + dy, text.letters, text.length);
    };
    if ((painting.style & kSuperTextHeightMask) == kSuperText40) {
        draw(kWhite, -2, -1);
        draw(kGrey, 2, 1);
        draw(kLightGrey, 0, 0);
    } else {
        draw(kBlack, 0, 0);
    }
}

void Paint(HWND window) {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    if (dc == nullptr) {
        return;
    }
    const auto style = static_cast<DWORD>(GetWindowLongPtrA(window, GWL_STYLE));
    RECT client{};
    GetClientRect(window, &client);
    const Painting painting{window, dc, style, client, MarginOf(style, client)};
    Fill(painting);
    DrawFrame(painting);
    DrawCaption(painting);
    if ((style & kSuperParentDraws) != 0) {
        SendMessageA(GetParent(window), kSuperDrawMessage,
                     static_cast<WPARAM>(GetDlgCtrlID(window)), reinterpret_cast<LPARAM>(dc));
    }
    EndPaint(window, &paint);
}

LRESULT CALLBACK SuperWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint(window);
        return 0;
    case WM_SETTEXT: {
        InvalidateRect(window, nullptr, FALSE);
        const LRESULT result = DefWindowProcA(window, message, wParam, lParam);
        UpdateWindow(window);
        return result;
    }
    default:
        return DefWindowProcA(window, message, wParam, lParam);
    }
}

} // namespace

bool RegisterSuperWindow(HINSTANCE instance) {
    WNDCLASSEXA description{};
    description.cbSize = sizeof(description);
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = SuperWindowProcedure;
    description.hInstance = instance;
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH));
    description.lpszClassName = kSuperWindowClass;
    return RegisterClassExA(&description) != 0;
}

void UnregisterSuperWindow(HINSTANCE instance) {
    UnregisterClassA(kSuperWindowClass, instance);
}

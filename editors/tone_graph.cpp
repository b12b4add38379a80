#include "editors/tone_graph.h"

#include "editors/selected_object.h"

#include <algorithm>

SIZE GraphInside(HWND graph) {
    RECT client{};
    GetClientRect(graph, &client);
    return {client.right - 2, client.bottom - 2};
}

void MakeGraphSquare(HWND graph) {
    const SIZE inside = GraphInside(graph);
    if (inside.cx == inside.cy) {
        return;
    }
    const LONG side = std::min(inside.cx, inside.cy);
    RECT place{};
    GetWindowRect(graph, &place);
    POINT corner{place.left, place.top};
    ScreenToClient(GetParent(graph), &corner);
    MoveWindow(graph, corner.x + (inside.cx - side + 1) / 2 + 1,
               corner.y + (inside.cy - side + 1) / 2 + 1, side, side, FALSE);
}

void DrawToneBars(HDC dc, const BarTable& bars, const RECT& client) {
    constexpr COLORREF kBarColor = 0x808080;
    if (!bars) {
        return;
    }
    const ThinPen pen(dc, kBarColor);
    for (int tone = 0; tone < static_cast<int>(kTones); ++tone) {
        const int x = tone * (client.right - 2) / 255 + 1;
        MoveToEx(dc, x, bars[static_cast<std::size_t>(tone)], nullptr);
        LineTo(dc, x, client.bottom - 1);
    }
}

void DrawToneCurve(HDC dc, const ToneCurve& curve, COLORREF color, const RECT& client) {
    const int width = client.right - 4;
    const int height = client.bottom - 2;
    if (width <= 0) {
        return;
    }
    const ThinPen pen(dc, color);
    MoveToEx(dc, 2, height, nullptr);
    for (int x = 0; x <= width; ++x) {
        const int tone = (width / 2 + 255 * x) / width;
        const int rise = curve[static_cast<std::size_t>(tone)] * (height - 2);
        LineTo(dc, x + 2, height - (rise + 127) / 255);
    }
}

#include "platform/qt/paint.h"

#include "platform/qt/geometry.h"
#include "platform/qt/graphics.h"

#include <QPainter>

#include <algorithm>

namespace {

QRect ClientRect(const Window& window) {
    return {QPoint(0, 0), ClientSize(window)};
}

void ShowRegion(const Window& window, const QRegion& region) {
    if (!window.widget.isNull()) {
        window.widget->update(region.translated(ClientOrigin(window)));
    }
}

void CloseContext(Surface& surface) {
    if (surface.dc != nullptr) {
        CloseDeviceContext(surface.dc);
        surface.dc = nullptr;
    }
}

QRect ToQRect(const RECT& rect) {
    return {QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1)};
}

} // namespace

void ResizeSurface(Window& window) {
    const QSize size = ClientSize(window);
    Surface& surface = window.surface;
    if (window.kind != WindowKind::Registered || surface.image.size() == size) {
        return;
    }
    CloseContext(surface);
    const QColor background = BrushColor(window.background);
    QImage image(size.expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    image.fill(background.isValid() ? background : SystemColor(COLOR_BTNFACE));
    const QSize old = surface.image.size();
    QPainter(&image).drawImage(0, 0, surface.image);
    surface.image = image;
    QRegion stale(ClientRect(window));
    if ((window.classStyle & (CS_HREDRAW | CS_VREDRAW)) == 0) {
        stale -= QRect(QPoint(0, 0), old);
    }
    surface.update = (surface.update | stale) & ClientRect(window);
    surface.erase = true;
    ShowRegion(window, surface.update);
}

void SendPaint(HWND handle) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr || window->surface.update.isEmpty() || window->surface.painting) {
        return;
    }
    window->surface.painting = true;
    SendMessageA(handle, WM_PAINT, 0, 0);
    if (Window* after = FindWindowOf(handle)) {
        CloseContext(after->surface);
        after->surface.painting = false;
        after->surface.update = QRegion();
        after->surface.erase = false;
    }
}

void ClosePaint(HWND handle) {
    if (Window* window = FindWindowOf(handle)) {
        CloseContext(window->surface);
    }
}

extern "C" {

BOOL InvalidateRect(HWND handle, const RECT* rect, BOOL erase) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr) {
        return 0;
    }
    const QRect all = ClientRect(*window);
    const QRect stale = rect == nullptr ? all : ToQRect(*rect) & all;
    if (window->kind == WindowKind::Registered && !stale.isEmpty()) {
        window->surface.update |= stale;
        window->surface.erase |= erase != 0;
    }
    ShowRegion(*window, stale);
    return 1;
}

BOOL UpdateWindow(HWND handle) {
    const Window* window = FindWindowOf(handle);
    if (window == nullptr) {
        return 0;
    }
    if (IsWindowVisible(handle) && !window->surface.painting) {
        SendPaint(handle);
        if (QWidget* widget = WidgetOf(handle)) {
            widget->repaint();
        }
    }
    return 1;
}

HDC BeginPaint(HWND handle, PAINTSTRUCT* paint) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr || paint == nullptr || window->surface.image.isNull() ||
        window->surface.dc != nullptr) {
        return nullptr;
    }
    Surface& surface = window->surface;
    const QRect bounds = surface.update.boundingRect();
    surface.dc = OpenDeviceContext(surface.image, surface.update);
    const bool erase = surface.erase;
    if (!surface.painting) {
        ShowRegion(*window, surface.update);
    }
    surface.update = QRegion();
    surface.erase = false;
    *paint = {surface.dc,
              0,
              {bounds.left(), bounds.top(), bounds.left() + bounds.width(),
               bounds.top() + bounds.height()}};
    if (erase) {
        const auto dc = reinterpret_cast<WPARAM>(paint->hdc);
        paint->fErase = SendMessageA(handle, WM_ERASEBKGND, dc, 0) == 0;
    }
    return paint->hdc;
}

HDC GetDC(HWND handle) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr || window->surface.image.isNull() || window->surface.dc != nullptr) {
        return nullptr;
    }
    window->surface.dc = OpenDeviceContext(window->surface.image, QRegion(ClientRect(*window)));
    return window->surface.dc;
}

int ReleaseDC(HWND handle, HDC dc) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr || dc == nullptr || window->surface.dc != dc) {
        return 0;
    }
    CloseContext(window->surface);
    ShowRegion(*window, ClientRect(*window));
    return 1;
}

BOOL EndPaint(HWND handle, const PAINTSTRUCT* paint) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr || paint == nullptr) {
        return 0;
    }
    CloseContext(window->surface);
    return 1;
}

} // extern "C"

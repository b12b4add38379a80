#include "platform/qt/geometry.h"

#include "platform/qt/paint.h"
#include "platform/qt/parent.h"

namespace {

// The frame and title bar that a dialog counts as its own. What the desktop really draws around it
// is the desktop's affair and does not enter here, so that layouts are the same everywhere.
constexpr int kTitleBarHeight = 19;
constexpr QMargins kDialogFrame{3, 3 + kTitleBarHeight, 3, 3};

// Drawn inside the widget.
QMargins Border(const Window& window) {
    const bool drawn = window.kind == WindowKind::Registered && (window.style & WS_BORDER) != 0;
    return drawn ? QMargins(1, 1, 1, 1) : QMargins();
}

// Around the widget.
QMargins Frame(const Window& window) {
    const bool framed = !window.IsChild() && (window.style & WS_CAPTION) == WS_CAPTION;
    return framed ? kDialogFrame : QMargins();
}

// On the screen, for every window.
QRect ScreenRect(const Window& window) {
    const QWidget& widget = *window.widget;
    return QRect(widget.mapToGlobal(QPoint(0, 0)), widget.size()).marginsAdded(Frame(window));
}

RECT ToRect(const QRect& rect) {
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

bool IsShown(const Window& window) {
    return (window.style & WS_VISIBLE) != 0;
}

// The window and its widget, or null.
Window* Placed(HWND handle) {
    Window* window = FindWindowOf(handle);
    return window == nullptr || window->widget.isNull() ? nullptr : window;
}

void Restack(HWND handle, QWidget& widget, HWND after) {
    if (FindWindowOf(handle)->IsChild()) {
        MoveBehind(handle, after);
    }
    if (after == nullptr) {
        widget.raise();
    } else if (QWidget* above = WidgetOf(after); above != nullptr) {
        if (above->parentWidget() == widget.parentWidget() && !above->isWindow()) {
            widget.stackUnder(above);
        }
    }
}

} // namespace

QPoint ClientOrigin(const Window& window) {
    const QMargins border = Border(window);
    return {border.left(), border.top()};
}

QSize ClientSize(const Window& window) {
    const QWidget* widget = window.widget;
    const QSize size = widget == nullptr ? QSize() : widget->size().shrunkBy(Border(window));
    return size.expandedTo(QSize(0, 0));
}

QRect WindowRectOf(const Window& window, const QRect& client) {
    return client.marginsAdded(Frame(window)).marginsAdded(Border(window));
}

void PlaceWindow(const Window& window, const QRect& rect) {
    QRect place = rect.marginsRemoved(Frame(window));
    place.setSize(place.size().expandedTo(QSize(0, 0)));
    const Window* parent = window.IsChild() ? FindWindowOf(window.parent) : nullptr;
    if (parent != nullptr) {
        place.translate(ClientOrigin(*parent));
    }
    QWidget& widget = *window.widget;
    if (!window.IsChild()) {
        widget.setFixedSize(place.size());
    }
    widget.setGeometry(place);
}

void SendSize(HWND handle) {
    const Window* window = FindWindowOf(handle);
    if (window != nullptr) {
        const QSize size = ClientSize(*window);
        SendMessageA(handle, WM_SIZE, 0, MAKELPARAM(size.width(), size.height()));
    }
}

extern "C" {

BOOL ShowWindow(HWND handle, int command) {
    Window* window = Placed(handle);
    if (window == nullptr) {
        return 0;
    }
    const bool before = IsShown(*window);
    const bool shown = command != SW_HIDE;
    window->style = shown ? window->style | WS_VISIBLE : window->style & ~WS_VISIBLE;
    window->widget->setVisible(shown);
    return before;
}

BOOL SetWindowPos(HWND handle, HWND after, int x, int y, int width, int height, UINT flags) {
    const Window* window = Placed(handle);
    if (window == nullptr) {
        return 0;
    }
    QRect rect = ScreenRect(*window);
    const Window* parent = window->IsChild() ? Placed(window->parent) : nullptr;
    if (parent != nullptr) {
        rect.translate(-parent->widget->mapToGlobal(ClientOrigin(*parent)));
    }
    if ((flags & SWP_NOMOVE) == 0) {
        rect.moveTo(x, y);
    }
    if ((flags & SWP_NOSIZE) == 0) {
        rect.setSize({width, height});
    }
    const QSize before = ClientSize(*window);
    PlaceWindow(*window, rect);
    if ((flags & SWP_NOZORDER) == 0) {
        Restack(handle, *window->widget, after);
    }
    if (ClientSize(*window) != before) {
        ResizeSurface(*FindWindowOf(handle));
        SendSize(handle);
    }
    return 1;
}

BOOL MoveWindow(HWND handle, int x, int y, int width, int height, BOOL repaint) {
    const UINT redraw = repaint != 0 ? 0 : SWP_NOREDRAW;
    return SetWindowPos(handle, nullptr, x, y, width, height,
                        SWP_NOZORDER | SWP_NOACTIVATE | redraw);
}

BOOL GetClientRect(HWND handle, RECT* rect) {
    const Window* window = Placed(handle);
    if (window == nullptr || rect == nullptr) {
        return 0;
    }
    *rect = ToRect(QRect(QPoint(0, 0), ClientSize(*window)));
    return 1;
}

BOOL GetWindowRect(HWND handle, RECT* rect) {
    const Window* window = Placed(handle);
    if (window == nullptr || rect == nullptr) {
        return 0;
    }
    *rect = ToRect(ScreenRect(*window));
    return 1;
}

BOOL ScreenToClient(HWND handle, POINT* point) {
    const Window* window = Placed(handle);
    if (window == nullptr || point == nullptr) {
        return 0;
    }
    const QPoint origin = window->widget->mapToGlobal(ClientOrigin(*window));
    *point = {point->x - origin.x(), point->y - origin.y()};
    return 1;
}

BOOL ClientToScreen(HWND handle, POINT* point) {
    const Window* window = Placed(handle);
    if (window == nullptr || point == nullptr) {
        return 0;
    }
    const QPoint origin = window->widget->mapToGlobal(ClientOrigin(*window));
    *point = {point->x + origin.x(), point->y + origin.y()};
    return 1;
}

int GetSystemMetrics(int index) {
    return index == SM_CYCAPTION ? kTitleBarHeight : 0;
}

BOOL IsWindowVisible(HWND handle) {
    const Window* window = FindWindowOf(handle);
    while (window != nullptr && IsShown(*window)) {
        if (!window->IsChild()) {
            return 1;
        }
        window = FindWindowOf(window->parent);
    }
    return 0;
}

} // extern "C"

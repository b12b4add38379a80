#include "platform/qt/mouse.h"

#include "platform/qt/geometry.h"

#include <QCoreApplication>
#include <QMouseEvent>

namespace {

HWND captureWindow = nullptr;

LPARAM PackedPoint(const Window& window, const QMouseEvent& event) {
    const QPoint point = event.position().toPoint() - ClientOrigin(window);
    return MAKELPARAM(point.x(), point.y());
}

} // namespace

void SendMouse(HWND handle, UINT message, const QMouseEvent& event) {
    const Window* window = FindWindowOf(handle);
    if (window == nullptr || (message != WM_MOUSEMOVE && event.button() != Qt::LeftButton)) {
        return;
    }
    const WPARAM keys = (event.buttons() & Qt::LeftButton) != 0 ? MK_LBUTTON : 0;
    SendMessageA(handle, message, keys, PackedPoint(*window, event));
}

void ForgetCapture(HWND handle) {
    if (captureWindow == handle) {
        captureWindow = nullptr;
    }
}

bool RedirectToCapture(HWND receiver, QEvent& event) {
    QWidget* widget = WidgetOf(captureWindow);
    if (widget == nullptr || receiver == captureWindow) {
        return false;
    }
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    const QPointF global = mouse.globalPosition();
    QMouseEvent redirected(mouse.type(), widget->mapFromGlobal(global), global, mouse.button(),
                           mouse.buttons(), mouse.modifiers());
    QCoreApplication::sendEvent(widget, &redirected);
    return true;
}

extern "C" {

HWND SetCapture(HWND handle) {
    const HWND before = GetCapture();
    if (handle == nullptr || FindWindowOf(handle) != nullptr) {
        captureWindow = handle;
    }
    return before;
}

BOOL ReleaseCapture() {
    captureWindow = nullptr;
    return 1;
}

HWND GetCapture() {
    return FindWindowOf(captureWindow) == nullptr ? nullptr : captureWindow;
}

} // extern "C"

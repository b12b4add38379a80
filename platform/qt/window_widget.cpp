#include "platform/qt/window_widget.h"

#include "platform/qt/geometry.h"
#include "platform/qt/mouse.h"
#include "platform/qt/paint.h"

#include <QCloseEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

Qt::WindowFlags FlagsOf(const Window& window) {
    if (window.IsChild()) {
        return Qt::Widget;
    }
    if ((window.style & WS_CAPTION) != WS_CAPTION) {
        return Qt::Dialog | Qt::FramelessWindowHint;
    }
    Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if ((window.style & WS_SYSMENU) != 0) {
        flags |= Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    }
    return flags;
}

} // namespace

WindowWidget::WindowWidget(const Window& window, QWidget* parent)
    : QWidget(parent, FlagsOf(window)), handle_(window.handle) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent, window.kind == WindowKind::Registered);
}

void WindowWidget::paintEvent(QPaintEvent*) {
    SendPaint(handle_);
    const Window* window = FindWindowOf(handle_);
    if (window == nullptr || window->surface.image.isNull()) {
        return;
    }
    QPainter painter(this);
    const QPoint origin = ClientOrigin(*window);
    painter.drawImage(origin, window->surface.image);
    if (!origin.isNull()) {
        painter.setPen(Qt::black);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void WindowWidget::mousePressEvent(QMouseEvent* event) {
    SendMouse(handle_, WM_LBUTTONDOWN, *event);
}

void WindowWidget::mouseReleaseEvent(QMouseEvent* event) {
    SendMouse(handle_, WM_LBUTTONUP, *event);
}

void WindowWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    const Window* window = FindWindowOf(handle_);
    const bool told = window != nullptr && (window->classStyle & CS_DBLCLKS) != 0;
    SendMouse(handle_, told ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN, *event);
}

void WindowWidget::mouseMoveEvent(QMouseEvent* event) {
    SendMouse(handle_, WM_MOUSEMOVE, *event);
}

void WindowWidget::closeEvent(QCloseEvent* event) {
    // The window decides; nothing closes behind its back. An application that quits asks first.
    SendMessageA(handle_, WM_CLOSE, 0, 0);
    event->setAccepted(!IsWindowVisible(handle_));
}

#include "platform/qt/grab.h"

#include "platform/qt/window.h"
#include "platform/qt/window_testing.h"

#include <QPixmap>

QImage GrabWindow(HWND window) {
    QWidget* widget = WidgetOf(window);
    return widget == nullptr ? QImage() : widget->grab().toImage();
}

QWidget* WidgetForTest(HWND window) {
    return WidgetOf(window);
}

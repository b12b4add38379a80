// The widget of dialogs and of windows of registered classes.
#pragma once

#include "platform/qt/window.h"

class WindowWidget : public QWidget {
public:
    WindowWidget(const Window& window, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    HWND handle_;
};

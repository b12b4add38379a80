// Events of mouse and keyboard on the widgets of windows.
#pragma once

#include "platform/qt/window_testing.h"
#include "platform/win32.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

#include <functional>
#include <utility>

namespace qt_events {

// Sends one mouse event at a place of the window's widget.
inline void SendMouseTo(HWND window, QEvent::Type type, QPoint place,
                        Qt::MouseButton button = Qt::LeftButton) {
    QWidget* widget = WidgetForTest(window);
    const bool up = type == QEvent::MouseButtonRelease;
    const Qt::MouseButtons held = up || button == Qt::NoButton ? Qt::NoButton : button;
    QMouseEvent event(type, place, widget->mapToGlobal(place),
                      type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

inline void PressMouse(HWND window, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
    SendMouseTo(window, QEvent::MouseButtonPress, place, button);
}

inline void DragMouse(HWND window, QPoint place) {
    SendMouseTo(window, QEvent::MouseMove, place);
}

inline void ReleaseMouse(HWND window, QPoint place, Qt::MouseButton button = Qt::LeftButton) {
    SendMouseTo(window, QEvent::MouseButtonRelease, place, button);
}

inline void ClickMouse(HWND window, QPoint place) {
    PressMouse(window, place);
    if (IsWindow(window)) {
        ReleaseMouse(window, place);
    }
}

inline QPoint MiddleOf(HWND window) {
    return WidgetForTest(window)->rect().center();
}

// Presses and releases a key where the focus is.
inline void TypeKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                    const QString& text = {}) {
    for (QEvent::Type type : {QEvent::ShortcutOverride, QEvent::KeyPress, QEvent::KeyRelease}) {
        QWidget* focus = QApplication::focusWidget();
        QWidget* receiver = focus != nullptr ? focus : QApplication::activeWindow();
        if (receiver == nullptr) {
            receiver = WidgetForTest(GetFocus() != nullptr ? GetFocus() : GetActiveWindow());
        }
        if (receiver != nullptr) {
            QKeyEvent event(type, key, modifiers, text);
            QCoreApplication::sendEvent(receiver, &event);
        }
    }
}

// Handles everything that waits, deletions too.
inline void RunPending() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Runs an action once, from the event loop, as soon as a dialog is up.
inline void RunSoon(std::function<void()> action) {
    static std::function<void()> waiting;
    waiting = std::move(action);
    SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR id, DWORD) {
        KillTimer(nullptr, id);
        std::exchange(waiting, nullptr)();
    });
}

} // namespace qt_events

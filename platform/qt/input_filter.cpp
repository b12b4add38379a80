#include "platform/qt/input_filter.h"

#include "platform/qt/key_pump.h"
#include "platform/qt/key_state.h"
#include "platform/qt/keyboard.h"
#include "platform/qt/mouse.h"
#include "platform/qt/navigation.h"
#include "platform/qt/window.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace {

bool IsMouse(QEvent::Type type) {
    return type == QEvent::MouseMove || type == QEvent::MouseButtonPress ||
           type == QEvent::MouseButtonRelease || type == QEvent::MouseButtonDblClick;
}

bool IsKey(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease ||
           type == QEvent::ShortcutOverride;
}

bool IsInput(QEvent::Type type) {
    return IsMouse(type) || IsKey(type) || type == QEvent::Wheel || type == QEvent::Close;
}

// X11 has a source of its own for the keys that can be asked for.
bool EventsTellKeys() {
    return QGuiApplication::platformName() != QLatin1String("xcb");
}

void NoteKey(const QKeyEvent& event) {
    if (event.isAutoRepeat() || !EventsTellKeys()) {
        return;
    }
    for (const KeyRow* row = kKeys; row->virtualKey != 0; ++row) {
        if (row->qtKey == event.key() && event.type() == QEvent::KeyPress) {
            NotePress(row->virtualKey, 0);
        } else if (row->qtKey == event.key() && event.type() == QEvent::KeyRelease) {
            NoteRelease(row->virtualKey);
        }
    }
}

// The dialog that a key pressed in a widget is for; null for other windows, and for what has popped
// up in front of a dialog: open lists and menus treat their keys themselves.
HWND DialogInFront(const QWidget& widget, HWND window) {
    const HWND dialog = KeyDialogOf(window);
    const QWidget* home = WidgetOf(dialog);
    return home != nullptr && home->window() == widget.window() ? dialog : nullptr;
}

bool FilterKey(QWidget& widget, HWND window, QKeyEvent& event) {
    const HWND dialog = DialogInFront(widget, window);
    if (event.type() == QEvent::ShortcutOverride) {
        // The dialog's keys are its own, whatever shortcuts the host has.
        event.setAccepted(dialog != nullptr);
        return dialog != nullptr;
    }
    if (event.type() == QEvent::KeyPress && WasAnswered(event)) {
        event.accept();
        return true;
    }
    NoteKey(event);
    if (event.type() != QEvent::KeyPress || dialog == nullptr ||
        !HandleDialogKey(dialog, window, event)) {
        return false;
    }
    event.accept();
    return true;
}

} // namespace

bool FilterInput(QObject* receiver, QEvent* event) {
    if (HoldWhilePumping(receiver, *event)) {
        return true;
    }
    if (!IsInput(event->type()) || !receiver->isWidgetType()) {
        return false;
    }
    auto& widget = static_cast<QWidget&>(*receiver);
    const HWND window = WindowOfWidget(&widget);
    if (window == nullptr) {
        return IsMouse(event->type()) && RedirectToCapture(nullptr, *event);
    }
    if (!IsWindowEnabled(TopLevelOf(window))) {
        event->setAccepted(event->type() != QEvent::Close);
        return true;
    }
    if (IsMouse(event->type())) {
        return RedirectToCapture(window, *event);
    }
    return IsKey(event->type()) && FilterKey(widget, window, static_cast<QKeyEvent&>(*event));
}

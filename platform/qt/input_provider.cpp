// The layer's cursor and keyboard, in the slots of platform/base.
#include "platform/base/input.h"

#include "platform/qt/application.h"
#include "platform/qt/graphics.h"
#include "platform/qt/key_state.h"

#include <QGuiApplication>

#include <utility>

namespace {

bool overrides = false;

HCURSOR Arrow() {
    return LoadCursorHandle(nullptr, IDC_ARROW);
}

// The arrow gives every window its own cursor back.
void Show(HCURSOR cursor) {
    if (cursor == Arrow()) {
        if (std::exchange(overrides, false)) {
            QGuiApplication::restoreOverrideCursor();
        }
        return;
    }
    const QCursor shape = cursor == nullptr ? QCursor(Qt::BlankCursor) : CursorOfHandle(cursor);
    if (std::exchange(overrides, true)) {
        QGuiApplication::changeOverrideCursor(shape);
    } else {
        QGuiApplication::setOverrideCursor(shape);
    }
}

bool CanShowCursors() {
    return OnGuiThread() && qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

HCURSOR& Shown() {
    static HCURSOR cursor = Arrow();
    return cursor;
}

HCURSOR GetShownCursor() {
    return CanShowCursors() ? Shown() : nullptr;
}

HCURSOR SetShownCursor(HCURSOR cursor) {
    if (!CanShowCursors()) {
        return nullptr;
    }
    const HCURSOR before = std::exchange(Shown(), cursor);
    if (cursor != before) {
        Show(cursor);
    }
    return before;
}

constinit const InputProvider kProvider = {LoadCursorHandle, SetShownCursor, GetShownCursor,
                                           AskKeyState};

// The layer stays in memory for good, and so may its slots.
__attribute__((constructor)) void InstallProvider() {
    SetInputProvider(&kProvider);
}

} // namespace

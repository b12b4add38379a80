#include "platform/qt/key_pump.h"

#include "platform/qt/application.h"
#include "platform/qt/focus.h"
#include "platform/qt/key_state.h"
#include "platform/qt/window.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QThread>

#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr int kNotPumping = -1;
int pumpLevel = kNotPumping;

// A handler of the host's that opens a loop of its own meanwhile needs its events there.
bool IsPumping() {
    return pumpLevel != kNotPumping && QThread::currentThread()->loopLevel() == pumpLevel;
}

std::vector<std::function<void()>>& HeldCalls() {
    static auto& calls = *new std::vector<std::function<void()>>;
    return calls;
}

// Events are rebuilt from their fields: what Qt clones goes on sharing the device's state.
std::unique_ptr<QEvent> Rebuilt(const QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto& key = static_cast<const QKeyEvent&>(event);
        auto copy = std::make_unique<QKeyEvent>(
            key.type(), key.key(), key.modifiers(), key.nativeScanCode(), key.nativeVirtualKey(),
            key.nativeModifiers(), key.text(), key.isAutoRepeat(),
            static_cast<quint16>(key.count()));
        copy->setTimestamp(key.timestamp());
        return copy;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        return std::make_unique<QMouseEvent>(mouse.type(), mouse.position(), mouse.scenePosition(),
                                             mouse.globalPosition(), mouse.button(),
                                             mouse.buttons(), mouse.modifiers());
    }
    case QEvent::Close:
        return std::make_unique<QEvent>(QEvent::Close);
    default:
        return nullptr;
    }
}

bool IsInput(const QEvent& event) {
    switch (event.type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::Close:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
        return true;
    default:
        return false;
    }
}

bool IsOwnWidget(const QObject* object) {
    return object->isWidgetType() && WindowOfWidget(static_cast<const QWidget*>(object)) != nullptr;
}

// Takes presses of the keys that programs ask for; they are known from now on.
bool TakeKey(const QEvent& event) {
    const bool isKey = event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease;
    if (!isKey || !OwnWindowIsActive()) {
        return false;
    }
    const auto& key = static_cast<const QKeyEvent&>(event);
    for (const KeyRow* row = kKeys; row->virtualKey != 0; ++row) {
        if (row->qtKey == key.key()) {
            if (event.type() == QEvent::KeyRelease) {
                NoteRelease(row->virtualKey);
            } else if (!key.isAutoRepeat()) {
                NotePress(row->virtualKey, 0);
            }
            return true;
        }
    }
    return false;
}

} // namespace

void PumpKeys() {
    if (pumpLevel != kNotPumping) {
        return;
    }
    pumpLevel = QThread::currentThread()->loopLevel();
    QCoreApplication::processEvents();
    pumpLevel = kNotPumping;
    for (auto& call : std::exchange(HeldCalls(), {})) {
        PostCall(std::move(call));
    }
}

bool HoldWhilePumping(std::function<void()>& call) {
    if (!IsPumping()) {
        return false;
    }
    HeldCalls().push_back(std::move(call));
    return true;
}

bool HoldWhilePumping(QObject* receiver, QEvent& event) {
    if (!IsPumping()) {
        return false;
    }
    if (event.type() == QEvent::Timer) {
        return IsOwnWidget(receiver); // a held scroll arrow rests; its timer comes again
    }
    if (!IsInput(event)) {
        return false;
    }
    if (event.type() == QEvent::ShortcutOverride) {
        event.accept(); // no shortcut of the host's runs now
        return true;
    }
    if (TakeKey(event)) {
        event.accept();
        return true;
    }
    std::shared_ptr<QEvent> copy = Rebuilt(event);
    if (copy != nullptr) {
        HeldCalls().push_back([receiver = QPointer<QObject>(receiver), copy] {
            if (!receiver.isNull()) {
                QCoreApplication::sendEvent(receiver, copy.get());
            }
        });
    }
    // An ignored event would go on to the parent; an accepted close would close.
    event.setAccepted(event.type() != QEvent::Close);
    return true;
}

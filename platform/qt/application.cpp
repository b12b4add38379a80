#include "platform/qt/application.h"

#include "platform/qt/focus.h"
#include "platform/qt/input_filter.h"
#include "platform/qt/key_pump.h"
#include "platform/win32.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QThread>
#include <QWidget>

#include <clocale>
#include <string>

namespace {

const auto kPostedCall = static_cast<QEvent::Type>(QEvent::User + 0x5A51);

class PostedCall : public QEvent {
public:
    explicit PostedCall(std::function<void()> call) : QEvent(kPostedCall), call(std::move(call)) {}

    std::function<void()> call;
};

// What the layer adds to an application; it belongs to the application and goes with it.
class Attachment : public QObject {
public:
    explicit Attachment(QApplication& application) : QObject(&application) {
        application.installEventFilter(this);
        connect(&application, &QApplication::focusChanged, this, &MoveFocus);
    }

    bool eventFilter(QObject* receiver, QEvent* event) override {
        return FilterInput(receiver, event);
    }

protected:
    void customEvent(QEvent* event) override {
        if (event->type() != kPostedCall) {
            return;
        }
        auto& call = static_cast<PostedCall*>(event)->call;
        if (!HoldWhilePumping(call)) {
            call();
        }
    }
};

QPointer<Attachment>& CurrentAttachment() {
    static auto& attachment = *new QPointer<Attachment>;
    return attachment;
}

bool HasDisplay() {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(variable)) {
            return true;
        }
    }
    return false;
}

// Kept for the process: windows of other libraries may come to stand on it. Qt takes the user's
// locale for the whole process; the host gets its own back.
void MakeApplication() {
    static char name[] = "zqUi";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    static auto* application = new QApplication(count, arguments);
    std::setlocale(LC_ALL, locale.c_str());
    application->setQuitOnLastWindowClosed(false);
}

} // namespace

bool EnsureApplication() {
    if (QCoreApplication::instance() == nullptr && HasDisplay()) {
        MakeApplication();
    }
    auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (application == nullptr || !OnGuiThread()) {
        return false;
    }
    if (CurrentAttachment().isNull()) {
        CurrentAttachment() = new Attachment(*application);
    }
    return true;
}

bool OnGuiThread() {
    const auto* application = QCoreApplication::instance();
    return application != nullptr && application->thread() == QThread::currentThread();
}

bool PostCall(std::function<void()> call, int priority) {
    if (CurrentAttachment().isNull()) {
        return false;
    }
    QCoreApplication::postEvent(CurrentAttachment(), new PostedCall(std::move(call)), priority);
    return true;
}

extern "C" BOOL IsGUIThread(BOOL convert) {
    return QCoreApplication::instance() == nullptr ? convert != 0 : OnGuiThread();
}

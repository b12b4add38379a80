#include "platform/qt/modal_loop.h"

#include "platform/qt/window.h"

#include <QApplication>

#include <utility>
#include <vector>

namespace {

ModalLoop* innermost = nullptr;

std::vector<QPointer<QWidget>>& UnusedWidgets() {
    static auto& widgets = *new std::vector<QPointer<QWidget>>;
    return widgets;
}

void DeleteUnusedWidgets() {
    for (const auto& widget : std::exchange(UnusedWidgets(), {})) {
        if (!widget.isNull()) {
            widget->deleteLater();
        }
    }
}

QWindow* WindowWithId(WId id) {
    for (QWindow* window : QGuiApplication::allWindows()) {
        if (window->handle() != nullptr && window->winId() == id) {
            return window;
        }
    }
    return nullptr;
}

QWindow* NativeWindowOf(QWidget& widget) {
    QWidget* top = widget.window();
    top->winId(); // makes the native window
    return top->windowHandle();
}

} // namespace

ModalLoop::ModalLoop(HWND owner) {
    const HWND top = TopLevelOf(owner);
    if (top != nullptr) {
        if (!EnableWindow(top, 0)) {
            disabledOwner_ = top;
        }
        ownerWindow_ = WidgetOf(top) == nullptr ? nullptr : NativeWindowOf(*WidgetOf(top));
        return;
    }
    const auto id = static_cast<WId>(reinterpret_cast<std::uintptr_t>(owner));
    if (id == 0) {
        return;
    }
    if (QWindow* window = WindowWithId(id)) {
        while (window->parent() != nullptr) {
            window = window->parent();
        }
        ownerWindow_ = window;
        return;
    }
    foreignOwner_.reset(QWindow::fromWinId(id));
    ownerWindow_ = foreignOwner_.get();
}

ModalLoop::~ModalLoop() {
    Leave();
}

void ModalLoop::Enter(HWND dialog) {
    dialog_ = dialog;
    entered_ = true;
    outer_ = std::exchange(innermost, this);
    FindWindowOf(dialog)->modal = this;
}

bool ModalLoop::Runs() const {
    return !ended_ && IsWindow(dialog_);
}

// The dialog blocks its owner. Qt knows the owner by its native window only, for it may belong to
// the host or to another program.
void ModalLoop::MakeModal(QWidget& widget) {
    if (!widget.isWindow() || ownerWindow_.isNull()) {
        return;
    }
    widget.setWindowModality(Qt::WindowModal);
    NativeWindowOf(widget)->setTransientParent(ownerWindow_);
}

void ModalLoop::Show() {
    QWidget* widget = WidgetOf(dialog_);
    if (widget == nullptr) {
        return;
    }
    MakeModal(*widget);
    ShowWindow(dialog_, SW_SHOW);
    if (widget->isWindow()) {
        widget->activateWindow();
    }
}

void ModalLoop::Run() {
    while (Runs()) {
        loop_.exec(QEventLoop::DialogExec);
        if (Runs()) {
            // The application quits. The dialog ends as if it had been cancelled.
            SendMessageA(dialog_, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
            return;
        }
    }
}

void ModalLoop::ReleaseOwner() {
    if (disabledOwner_ != nullptr) {
        EnableWindow(std::exchange(disabledOwner_, nullptr), 1);
    }
}

void ModalLoop::End(INT_PTR result) {
    result_ = result;
    ended_ = true;
    ReleaseOwner();
    const QWidget* widget = WidgetOf(dialog_);
    const bool wasActive = widget != nullptr && widget->isWindow() && widget->isActiveWindow();
    ShowWindow(dialog_, SW_HIDE);
    if (wasActive && !ownerWindow_.isNull() && foreignOwner_ == nullptr) {
        ownerWindow_->requestActivate();
    }
    loop_.quit();
}

void ModalLoop::Abandon() {
    ReleaseOwner();
    loop_.quit();
}

void ModalLoop::Leave() {
    ReleaseOwner();
    if (!std::exchange(entered_, false)) {
        return;
    }
    if (Window* window = FindWindowOf(dialog_)) {
        window->modal = nullptr;
    }
    innermost = outer_;
    if (innermost == nullptr) {
        DeleteUnusedWidgets();
    }
}

HWND InnermostModalDialog() {
    for (const ModalLoop* loop = innermost; loop != nullptr; loop = loop->outer_) {
        if (loop->Runs()) {
            return loop->dialog_;
        }
    }
    return nullptr;
}

void LeaveModalLoop(HWND dialog) {
    Window* window = FindWindowOf(dialog);
    if (window != nullptr && window->modal != nullptr) {
        std::exchange(window->modal, nullptr)->Abandon();
    }
}

void DeleteWhenIdle(QWidget* widget) {
    if (innermost == nullptr) {
        widget->deleteLater();
    } else {
        UnusedWidgets().emplace_back(widget);
    }
}

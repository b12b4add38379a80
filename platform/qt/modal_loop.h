// The loop that a modal dialog runs in. It lives on the stack of whoever opened the dialog, so that
// the result outlives the dialog's window. Loops nest; the innermost ends first.
#pragma once

#include "platform/win32.h"

#include <QEventLoop>
#include <QPointer>
#include <QWindow>

#include <memory>

class QWidget;

class ModalLoop {
public:
    // Disables the owner: a window of the layer, or the native id of another, or null.
    explicit ModalLoop(HWND owner);
    ~ModalLoop();
    ModalLoop(const ModalLoop&) = delete;
    ModalLoop& operator=(const ModalLoop&) = delete;

    const QWindow* OwnerWindow() const { return ownerWindow_; }

    // Lets a window of its own block the owner.
    void MakeModal(QWidget& widget);

    void Enter(HWND dialog);
    // Whether the dialog lives and was not ended.
    bool Runs() const;
    void Show();
    void Run();
    // Keeps the result, gives the owner back and hides the dialog.
    void End(INT_PTR result);
    // The window is going.
    void Abandon();
    void Leave();

    INT_PTR Result() const { return result_; }

private:
    void ReleaseOwner();

    QEventLoop loop_;
    HWND dialog_ = nullptr;
    ModalLoop* outer_ = nullptr;
    HWND disabledOwner_ = nullptr;
    std::unique_ptr<QWindow> foreignOwner_;
    QPointer<QWindow> ownerWindow_;
    INT_PTR result_ = -1;
    bool entered_ = false;
    bool ended_ = false;

    friend HWND InnermostModalDialog();
};

// The dialog whose loop was entered last and still runs; null without one.
HWND InnermostModalDialog();

// Tells a dialog's loop that its window is going.
void LeaveModalLoop(HWND dialog);

// Deletes a widget that is out of use, once no handler of it can be on the stack: handlers may have
// opened a dialog, so all modal loops must be over.
void DeleteWhenIdle(QWidget* widget);

#include "host/run_progress.h"

#include "platform/win32.h"

#include <QCoreApplication>
#include <QProgressDialog>

#include <climits>
#include <zq/engine.h>

namespace {

constexpr int kLookEveryMs = 30;
constexpr int kWidth = 320;

} // namespace

RunProgress* RunProgress::current = nullptr;

RunProgress::RunProgress(QWidget* parent, const QString& title, int patienceMs)
    : parent_(parent), title_(title), patienceMs_(patienceMs) {
    current = this;
    sinceStart_.start();
    progressHook = [](i32 percent) { current->percent_ = percent; };
    abortHook = [] { return current->MayStop(); };
}

RunProgress::~RunProgress() {
    progressHook = nullptr;
    abortHook = nullptr;
    current = nullptr;
}

// The answer to the engine's question. It comes before every row, which is often enough to keep the
// bar alive and far too often to do so each time.
i32 RunProgress::MayStop() {
    if (cancelled_ || sinceStart_.elapsed() < patienceMs_) {
        return cancelled_ ? 1 : 0;
    }
    if (dialog_ == nullptr) {
        Show();
    } else if (sinceLook_.elapsed() < kLookEveryMs) {
        return 0;
    }
    // A kernel shows the wait cursor, but here is something to click on.
    SetCursor(LoadCursorA(nullptr, IDC_ARROW));
    dialog_->setValue(percent_);
    QCoreApplication::processEvents();
    sinceLook_.start();
    return cancelled_ ? 1 : 0;
}

void RunProgress::Show() {
    dialog_ = std::make_unique<QProgressDialog>(title_, "&Cancel", 0, 100, parent_);
    dialog_->setWindowTitle("zqhost");
    dialog_->setWindowModality(Qt::WindowModal);
    dialog_->setMinimumDuration(INT_MAX);
    dialog_->setMinimumWidth(kWidth);
    dialog_->setAutoReset(false);
    dialog_->setAutoClose(false);
    QObject::connect(dialog_.get(), &QProgressDialog::canceled, [this] { cancelled_ = true; });
    dialog_->show();
}

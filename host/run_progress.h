// A run of an effect on the whole picture, seen by the user.
#pragma once

#include "platform/types.h"

#include <QElapsedTimer>
#include <QString>

#include <memory>

class QProgressDialog;
class QWidget;

constexpr int kUsualPatienceMs = 500;

// As long as one lives, the engine's hooks are its own, and every run on this thread is the one
// that it shows: once the runs have taken longer than the patience, a bar with Cancel over
// `parent`. Only one can live at a time.
class RunProgress {
public:
    RunProgress(QWidget* parent, const QString& title, int patienceMs = kUsualPatienceMs);
    ~RunProgress();
    RunProgress(const RunProgress&) = delete;
    RunProgress& operator=(const RunProgress&) = delete;

    bool Cancelled() const { return cancelled_; }

private:
    i32 MayStop();
    void Show();

    static RunProgress* current;
    QWidget* parent_;
    QString title_;
    int patienceMs_;
    QElapsedTimer sinceStart_;
    QElapsedTimer sinceLook_;
    std::unique_ptr<QProgressDialog> dialog_;
    i32 percent_ = 0;
    bool cancelled_ = false;
};

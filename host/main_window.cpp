#include "host/main_window.h"

#include "host/dib_image.h"
#include "host/picture_view.h"
#include "host/run_progress.h"
#include "pictures/layer_files.h"

#include <zq/zqui.h>

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>

namespace {

const char* const kReadFilter = "Pictures (*.bmp *.png *.jpg *.jpeg);;All files (*)";
const char* const kWriteFilter = "PNG (*.png);;BMP (*.bmp);;JPEG (*.jpg *.jpeg)";

QString DroppedFile(const QMimeData* data) {
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 ? urls.first().toLocalFile() : QString();
}

} // namespace

MainWindow::MainWindow() : view_(new PictureView), facts_(new QLabel) {
    setCentralWidget(view_);
    statusBar()->addPermanentWidget(facts_);
    setAcceptDrops(true);
    view_->onZoomChanged = [this] { ShowZoom(); };
    MakeFileMenu();
    MakeEditMenu();
    MakeViewMenu();
    MakeEffectMenu();
    resize(800, 600);
    ShowDocument();
}

void MainWindow::MakeFileMenu() {
    QMenu* menu = menuBar()->addMenu("&File");
    menu->addAction("&Open...", QKeySequence("Ctrl+O"), [this] { ChooseAndOpen(); });
    needPicture_ << menu->addAction("Save &As...", QKeySequence("Ctrl+Shift+S"),
                                    [this] { ChooseAndSave(); });
    menu->addSeparator();
    menu->addAction("&Quit", QKeySequence("Ctrl+Q"), [this] { close(); });
}

void MainWindow::MakeEditMenu() {
    QMenu* menu = menuBar()->addMenu("&Edit");
    undo_ = menu->addAction("&Undo", QKeySequence("Ctrl+Z"), [this] { Undo(); });
    menu->addSeparator();
    needPicture_ << menu->addAction("&Mask from File...", [this] { ChooseMask(); })
                 << menu->addAction("&White Mask", [this] { SetWhiteMask(); });
}

void MainWindow::MakeViewMenu() {
    QMenu* menu = menuBar()->addMenu("&View");
    menu->addAction("Zoom to &Fit", QKeySequence("Ctrl+0"), [this] { view_->ZoomToFit(); });
    menu->addAction("&Actual Size", QKeySequence("Ctrl+1"), [this] { view_->SetZoom(1); });
    menu->addAction("Zoom &In", QKeySequence("Ctrl++"), [this] { view_->ZoomIn(); });
    menu->addAction("Zoom &Out", QKeySequence("Ctrl+-"), [this] { view_->ZoomOut(); });
}

void MainWindow::MakeEffectMenu() {
    QMenu* menu = menuBar()->addMenu("Effe&cts");
    menu->addAction("&Effect Browser...", [this] { RunEffectBrowser(); });
    menu->addSeparator();
    AddEffectMenus(*menu, [this](const EffectOffer& offer) { RunOffer(offer); });
    needPicture_ << menu->actions();
}

PictureResult MainWindow::Open(const QString& path) {
    OwnedBlock image;
    OwnedBlock mask;
    const PictureResult result = ReadLayer(QFile::encodeName(path).constData(), image, mask);
    if (result != PictureResult::Ok) {
        return result;
    }
    if (!document_.SetPicture(std::move(image), std::move(mask))) {
        return PictureResult::TooLarge;
    }
    path_ = path;
    statusBar()->clearMessage();
    ShowDocument();
    return PictureResult::Ok;
}

void MainWindow::OpenOrExplain(const QString& path) {
    const PictureResult result = Open(path);
    if (result != PictureResult::Ok) {
        Explain(path, DescribePictureResult(result));
    }
}

void MainWindow::RunOffer(const EffectOffer& offer) {
    if (document_.IsEmpty()) {
        return;
    }
    EffectRecord record = DefaultRecord(offer);
    if (!offer.hasDialog || GetZQParam(offer.id, Owner(), document_.Handle(), record.data()) == 1) {
        Apply(offer.id, offer.name, record);
    }
}

void MainWindow::RunEffectBrowser() {
    if (document_.IsEmpty()) {
        return;
    }
    EffectRecord record = {};
    EffectId id = 0;
    if (GetZQBrowserParam(Owner(), document_.Handle(), &id, record.data(), record.size()) == 1) {
        const EffectOffer* offer = FindEffectOffer(id);
        Apply(id, offer != nullptr ? offer->name : "The effect", record);
    }
}

void* MainWindow::Owner() const {
    return reinterpret_cast<void*>(winId());
}

void MainWindow::Apply(EffectId id, const char* name, const EffectRecord& record) {
    const QString title = QString::fromLatin1(name);
    const RunProgress progress(this, title);
    const bool changed = document_.ApplyEffect(id, record.data());
    if (changed) {
        ShowDocument();
    }
    const char* outcome = changed                ? " applied"
                          : progress.Cancelled() ? " cancelled"
                                                 : " did not change the picture";
    statusBar()->showMessage(title + outcome);
}

void MainWindow::ChooseAndOpen() {
    const QString path = QFileDialog::getOpenFileName(this, "Open", path_, kReadFilter);
    if (!path.isEmpty() && MayDiscard()) {
        OpenOrExplain(path);
    }
}

void MainWindow::ChooseAndSave() {
    QFileDialog dialog(this, "Save As", QFileInfo(path_).path(), kWriteFilter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("png");
    dialog.selectFile(QFileInfo(path_).fileName());
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const QString path = dialog.selectedFiles().first();
    // A mask that hides nothing would only make the file larger.
    const bool masked = ImageOfDib(document_.Image(), document_.Mask()).hasAlphaChannel();
    const PictureResult result = WritePicture(QFile::encodeName(path).constData(),
                                              document_.Image(), masked ? document_.Mask() : 0);
    if (result != PictureResult::Ok) {
        Explain(path, DescribePictureResult(result));
        return;
    }
    path_ = path;
    document_.MarkSaved();
    statusBar()->showMessage("Saved");
    ShowDocument();
}

void MainWindow::ChooseMask() {
    const QString path = QFileDialog::getOpenFileName(this, "Mask from File", path_, kReadFilter);
    if (path.isEmpty()) {
        return;
    }
    OwnedBlock mask;
    const PictureResult result = ReadMask(QFile::encodeName(path).constData(), mask);
    if (result != PictureResult::Ok) {
        Explain(path, DescribePictureResult(result));
    } else if (!document_.SetMask(std::move(mask))) {
        Explain(path, "a mask must have the size of the picture");
    } else {
        ShowDocument();
    }
}

void MainWindow::SetWhiteMask() {
    OwnedBlock mask;
    if (NewWhiteMask(static_cast<u32>(document_.Width()), static_cast<u32>(document_.Height()),
                     mask) == PictureResult::Ok &&
        document_.SetMask(std::move(mask))) {
        ShowDocument();
    }
}

void MainWindow::Undo() {
    if (document_.Undo()) {
        statusBar()->clearMessage();
        ShowDocument();
    }
}

void MainWindow::ShowDocument() {
    const bool empty = document_.IsEmpty();
    for (QAction* action : needPicture_) {
        action->setEnabled(!empty);
    }
    undo_->setEnabled(document_.CanUndo());
    setWindowModified(document_.IsModified());
    setWindowTitle(empty ? QStringLiteral("zqhost")
                         : QStringLiteral("%1 (%2 x %3)[*] - zqhost")
                               .arg(QFileInfo(path_).fileName())
                               .arg(document_.Width())
                               .arg(document_.Height()));
    view_->SetImage(ImageOfDib(document_.Image(), document_.Mask()));
}

void MainWindow::ShowZoom() {
    facts_->setText(document_.IsEmpty()
                        ? QStringLiteral("Open a picture, or drop one here")
                        : QStringLiteral("%1 x %2, %3, %4 %")
                              .arg(document_.Width())
                              .arg(document_.Height())
                              .arg(document_.IsGrey() ? "8-bit grey" : "24-bit colour")
                              .arg(view_->Zoom() * 100, 0, 'f', view_->Zoom() < 0.1 ? 1 : 0));
}

void MainWindow::Explain(const QString& path, const char* reason) {
    QMessageBox::critical(
        this, "zqhost",
        QStringLiteral("%1: %2.").arg(QFileInfo(path).fileName(), QString::fromLatin1(reason)));
}

bool MainWindow::MayDiscard() {
    return !document_.IsModified() ||
           QMessageBox::question(this, "zqhost", "Discard the changes to the picture?",
                                 QMessageBox::Discard | QMessageBox::Cancel,
                                 QMessageBox::Cancel) == QMessageBox::Discard;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(MayDiscard());
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFile(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QString path = DroppedFile(event->mimeData());
    if (!path.isEmpty() && MayDiscard()) {
        event->acceptProposedAction();
        OpenOrExplain(path);
    }
}

// The window of zqhost: a picture, its menus, and the road from a dialog's record to the picture.
#pragma once

#include "host/document.h"
#include "host/effect_offers.h"
#include "pictures/pictures.h"

#include <QMainWindow>

class PictureView;
class QAction;
class QLabel;
class QMenu;

class MainWindow : public QMainWindow {
public:
    MainWindow();

    // Opens a picture without a word.
    PictureResult Open(const QString& path);
    // The same, and says in a message box why it cannot be opened.
    void OpenOrExplain(const QString& path);

    // Shows an effect's dialog, or the browser of all, over the picture and applies the record that
    // comes back. An effect without a dialog is applied at once.
    void RunOffer(const EffectOffer& offer);
    void RunEffectBrowser();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void MakeFileMenu();
    void MakeEditMenu();
    void MakeViewMenu();
    void MakeEffectMenu();
    void* Owner() const;
    void Apply(EffectId id, const char* name, const EffectRecord& record);
    void ChooseAndOpen();
    void ChooseAndSave();
    void ChooseMask();
    void SetWhiteMask();
    void Undo();
    void ShowDocument();
    void ShowZoom();
    void Explain(const QString& path, const char* reason);
    bool MayDiscard();

    HostDocument document_;
    QString path_;
    PictureView* view_;
    QLabel* facts_;
    QAction* undo_ = nullptr;
    QList<QAction*> needPicture_;
};

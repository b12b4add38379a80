#include "host/run_progress.h"

#include "host/document.h"
#include "tests/support/leak_guard.h"

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <zq/engine.h>
#include <zq/params.h>

namespace {

constexpr int kForever = 1000000;

QProgressDialog* ShownDialog() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QProgressDialog*>(widget);
            dialog != nullptr && dialog->isVisible()) {
            return dialog;
        }
    }
    return nullptr;
}

class ARunWithProgress : public LeakGuardTest {
protected:
    ARunWithProgress() {
        EXPECT_TRUE(document_.SetPicture(MakeDib(ImageClass::Colour, 200, 300),
                                         MakeDib(ImageClass::Grey, 200, 300)));
    }

    bool Blur(EffectId id, const RunProgress&) {
        const i32 size = 32;
        return document_.ApplyEffect(id, &size);
    }

    int count_ = 1;
    char name_[20] = "host_widgets_test";
    char* arguments_[2] = {name_, nullptr};
    QApplication application_{count_, arguments_};
    HostDocument document_;
};

TEST_F(ARunWithProgress, LeavesThePictureAsItWasWhenItIsCancelled) {
    const std::vector<u8> image = BytesOf(document_.Image());
    const std::vector<u8> mask = BytesOf(document_.Mask());
    for (const EffectId id : {8, 17}) { // one runs on the image alone, one on the mask as well
        RunProgress progress(nullptr, "Blur", 0);
        QTimer::singleShot(0, [] {
            QProgressDialog* dialog = ShownDialog();
            ASSERT_NE(dialog, nullptr);
            EXPECT_EQ(dialog->labelText(), "Blur");
            dialog->findChild<QPushButton*>()->click();
        });
        EXPECT_FALSE(Blur(id, progress));
        EXPECT_TRUE(progress.Cancelled());
    }
    EXPECT_EQ(BytesOf(document_.Image()), image);
    EXPECT_EQ(BytesOf(document_.Mask()), mask);
    EXPECT_FALSE(document_.CanUndo());
    EXPECT_EQ(ShownDialog(), nullptr);
    EXPECT_EQ(progressHook, nullptr);
    EXPECT_EQ(abortHook, nullptr);
}

TEST_F(ARunWithProgress, ShowsHowFarItIs) {
    int shown = -1;
    {
        const RunProgress progress(nullptr, "Blur", 0);
        EXPECT_TRUE(Blur(8, progress));
        ASSERT_NE(ShownDialog(), nullptr);
        shown = ShownDialog()->value();
        EXPECT_FALSE(progress.Cancelled());
    }
    EXPECT_TRUE(shown >= 0 && shown <= 100) << shown;
    EXPECT_TRUE(document_.CanUndo());
}

TEST_F(ARunWithProgress, ShowsNothingWhileItIsShort) {
    const RunProgress progress(nullptr, "Blur", kForever);
    EXPECT_TRUE(Blur(8, progress));
    EXPECT_EQ(ShownDialog(), nullptr);
}

} // namespace

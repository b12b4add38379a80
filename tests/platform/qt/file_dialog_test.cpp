#include "tests/platform/qt/drive.h"

#include "platform/qt/file_dialog_testing.h"

#include <QFileDialog>
#include <QTest>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

struct Options : OPENFILENAMEA {
    char file[64] = "";

    explicit Options(const char* folder = nullptr) : OPENFILENAMEA() {
        lStructSize = sizeof(OPENFILENAMEA);
        lpstrFilter = "Magic Curve (*.mmc)\0*.mmc\0";
        lpstrFile = file;
        nMaxFile = sizeof file;
        lpstrInitialDir = folder;
        lpstrTitle = "Load";
        lpstrDefExt = ".MMC";
    }
};

// Works the real dialog once it is up.
void WithFileDialog(const std::function<void(QFileDialog&)>& work) {
    RunSoon([work] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        work(*dialog);
    });
}

void TypeName(QFileDialog& dialog, const char* name) {
    QTest::keyClicks(dialog.focusWidget(), name);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
}

class AFileDialog : public testing::Test {
protected:
    AFileDialog() {
        std::string pattern = (std::filesystem::temp_directory_path() / "d-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
    }
    ~AFileDialog() override { std::filesystem::remove_all(folder_); }

    std::string folder_;
};

} // namespace

TEST_F(AFileDialog, GivesWhatTheUserTypesWithTheDefaultExtension) {
    const struct {
        BOOL (*ask)(OPENFILENAMEA*);
        const char* typed;
        const char* name;
    } kTable[] = {
        {GetOpenFileNameA, "nothing", "/nothing.MMC"},
        {GetOpenFileNameA, "a.b", "/a.b"},
        {GetSaveFileNameA, "new", "/new.MMC"},
    };
    for (const auto& row : kTable) {
        SCOPED_TRACE(row.typed);
        Options options(folder_.c_str());
        WithFileDialog([&](QFileDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Load");
            EXPECT_EQ(dialog.nameFilters(), QStringList("Magic Curve (*.mmc)"));
            TypeName(dialog, row.typed);
        });
        EXPECT_TRUE(row.ask(&options));
        EXPECT_EQ(options.file, folder_ + row.name);
        EXPECT_EQ(options.nFileOffset, folder_.size() + 1);
    }
}

TEST_F(AFileDialog, GivesNothingWhenItIsCancelledOrTheNameIsTooLong) {
    Options cancelled(folder_.c_str());
    WithFileDialog([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_FALSE(GetOpenFileNameA(&cancelled));
    EXPECT_STREQ(cancelled.file, "");

    Options options;
    AnswerNextFileDialog("/" + std::string(59, 'x')); // with its extension one byte too long
    EXPECT_FALSE(GetSaveFileNameA(&options));
    WORD needed = 0;
    std::memcpy(&needed, options.file, sizeof needed);
    EXPECT_EQ(needed, 65);
    AnswerNextFileDialog("");
    EXPECT_FALSE(GetOpenFileNameA(&options));
}

TEST_F(AFileDialog, BlocksItsOwnerAndLeavesItsKeysToItself) {
    static INT_PTR commands;
    commands = 0;
    const auto listen = [](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
        commands += message == WM_COMMAND ? 1 : 0;
        if (message == WM_INITDIALOG) {
            PostMessageA(dialog, WM_USER, 0, 0);
        } else if (message == WM_USER) {
            Options options;
            options.hwndOwner = dialog;
            WithFileDialog([dialog](QFileDialog& files) {
                EXPECT_FALSE(IsWindowEnabled(dialog));
                QTest::keyClick(&files, Qt::Key_Escape);
            });
            EXPECT_FALSE(GetOpenFileNameA(&options));
            EXPECT_TRUE(IsWindowEnabled(dialog));
            EndDialog(dialog, 7);
        }
        return message == WM_INITDIALOG;
    };
    EXPECT_EQ(DialogBoxParamA(TestModule(), MAKEINTRESOURCEA(101), nullptr, listen, 0), 7);
    EXPECT_EQ(commands, 0) << "Escape cancelled the dialog behind, too";
    RunPending();
}

// Tests of the dialogs with files.
#pragma once

#include "platform/qt/file_dialog_testing.h"
#include "platform/qt/graphics_testing.h"
#include "platform/qt/window_testing.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/editors/file_bytes.h"
#include "tests/support/scratch_folder.h"

// A folder of its own; no window, window class or drawing object may be left behind.
class EditorDialogTest : public DialogTest, protected ScratchFolder {
protected:
    EditorDialogTest()
        : windows_(LiveWindowCount()), classes_(RegisteredClassCount()),
          drawingObjects_(LiveGdiObjectCount()) {}

    ~EditorDialogTest() override {
        EXPECT_EQ(LiveWindowCount(), windows_);
        EXPECT_EQ(RegisteredClassCount(), classes_);
        EXPECT_EQ(LiveGdiObjectCount(), drawingObjects_);
    }

    // Files that no dialog takes; `magic` is the dialog's own, `others` the other dialog's.
    std::vector<std::string> RefusedFiles(u32 magic, u32 others) const {
        const std::vector<u8> payload(256, 9);
        std::vector<u8> cut = FileBytes(magic, 5, 1, 8, 0, {});
        cut.pop_back();
        return {Put("17-bytes", cut),
                Put("magic", FileBytes(0x12345678, 5, 1, 8, 256, payload)),
                Put("others", FileBytes(others, 5, 1, 8, 256, payload)),
                Put("short", FileBytes(magic, 5, 1, 8, 257, payload)),
                Put("huge", FileBytes(magic, 5, 1, 8, 0xFFFFFFFF, payload)),
                Path(""),
                Path("nothing"),
                ""}; // cancelled
    }

    // Presses a button that asks for a file and answers with this one.
    static void PressWithFile(HWND dialog, int button, const std::string& path) {
        AnswerNextFileDialog(path);
        Click(dialog, button);
    }

private:
    std::size_t windows_;
    std::size_t classes_;
    std::size_t drawingObjects_;
};

#include "platform/types.h"
#include "platform/win32.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr UINT kFailed = static_cast<UINT>(HFILE_ERROR);

class FileCalls : public testing::Test, protected ScratchFolder {
protected:
    static HFILE Open(const std::string& path, UINT style) {
        OFSTRUCT file;
        return OpenFile(path.c_str(), &file, style);
    }
};

} // namespace

TEST_F(FileCalls, CreateOverwriteAndReadFiles) {
    const std::string path = Path("text");
    EXPECT_EQ(Open(path, OF_READ), HFILE_ERROR);
    for (const char* text : {"longer text", "text"}) {
        const HFILE written = Open(path, OF_CREATE | OF_READWRITE);
        const auto length = static_cast<UINT>(std::string(text).size());
        EXPECT_EQ(_lwrite(written, text, length), length);
        EXPECT_EQ(_lclose(written), 0);
    }
    const HFILE file = Open(path, OF_READ);
    EXPECT_EQ(_llseek(file, 0, FILE_END), 4);
    EXPECT_EQ(_llseek(file, 1, FILE_BEGIN), 1);
    char buffer[9] = "????????";
    EXPECT_EQ(_lread(file, buffer, 8), 3u);
    EXPECT_STREQ(buffer, "ext?????");
    EXPECT_EQ(_lread(file, buffer, 8), 0u);
    EXPECT_EQ(_lwrite(file, "x", 1), kFailed);
    EXPECT_EQ(_lclose(file), 0);
    EXPECT_EQ(_lclose(file), HFILE_ERROR);
    EXPECT_EQ(_lread(file, buffer, 1), kFailed);
}

TEST_F(FileCalls, OpenNoFolders) {
    EXPECT_EQ(Open(Path(""), OF_READ), HFILE_ERROR);
    EXPECT_EQ(Open(Path(""), OF_CREATE | OF_READWRITE), HFILE_ERROR);
    EXPECT_EQ(OpenFile(nullptr, nullptr, OF_READ), HFILE_ERROR);
}

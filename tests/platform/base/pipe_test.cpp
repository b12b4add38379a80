#include "platform/win32.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

TEST(Pipes, OpenWithoutWaiting) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    OFSTRUCT file;
    const HFILE pipe = OpenFile(folder.Path("pipe").c_str(), &file, OF_READ);
    EXPECT_EQ(_llseek(pipe, 0, FILE_END), HFILE_ERROR);
    EXPECT_EQ(_lclose(pipe), 0);
}

// What the layer's files do beyond Windows' own.
#include "platform/types.h"
#include "platform/win32.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>

namespace {

class LayersFiles : public testing::Test, protected ScratchFolder {
protected:
    HFILE Open(const std::string& name, UINT style) const {
        OFSTRUCT file;
        return OpenFile(Path(name).c_str(), &file, style);
    }
};

TEST_F(LayersFiles, MayHaveLongNames) {
    const std::string name(150, 'n');
    EXPECT_EQ(_lclose(Open(name, OF_CREATE)), 0);
    const HFILE file = Open(name, OF_READ);
    EXPECT_EQ(_lclose(file), 0);
    EXPECT_EQ(_lclose(file), HFILE_ERROR);
    EXPECT_EQ(_lclose(HFILE_ERROR), HFILE_ERROR);
}

TEST_F(LayersFiles, WaitForNoPipe) {
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    const HFILE pipe = Open("pipe", OF_READ);
    EXPECT_EQ(_llseek(pipe, 0, FILE_END), HFILE_ERROR);
    EXPECT_EQ(_lclose(pipe), 0);
}

TEST_F(LayersFiles, KnowNoPlaceBeyond31Bits) {
    EXPECT_EQ(_lclose(Open("huge", OF_CREATE)), 0);
    std::filesystem::resize_file(Path("huge"), u64{1} << 31);
    const HFILE file = Open("huge", OF_READ);
    EXPECT_EQ(_llseek(file, 0, FILE_END), HFILE_ERROR);
    EXPECT_EQ(_lclose(file), 0);
}

} // namespace

// Parameter files that are no ordinary ones.
#include "editors/curve_file.h"
#include "editors/param_file.h"
#include "tests/support/leak_guard.h"
#include "tests/support/scratch_folder.h"

#include <sys/stat.h>

TEST_F(LeakGuardTest, APipeIsNoParameterFileAndAFullDiskIsSilent) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(ReadParamFile(folder.Path("pipe").c_str(), kCurveFileMagic), 0u);
    EXPECT_TRUE(WriteCurveFile("/dev/full", {}));
}

#include "editors/param_file.h"

#include "editors/curve_file.h"
#include "editors/filter_file.h"
#include "tests/editors/file_bytes.h"
#include "tests/pictures/scratch.h"

#include <numeric>

namespace {

class ParamFileTest : public PictureTest {
protected:
    u32 ReadBack(const std::vector<u8>& bytes, u32 magic = kCurveFileMagic) const {
        return ReadParamFile(Put("file", bytes).c_str(), magic);
    }
};

TEST_F(ParamFileTest, GoesRoundByteForByte) {
    MagicMirrorParams mirror = {3, {}};
    std::iota(std::begin(mirror.curve), std::end(mirror.curve), u8{0});
    ASSERT_TRUE(WriteCurveFile(Path("a.mmc").c_str(), mirror));
    const std::vector<u8> curve(std::begin(mirror.curve), std::end(mirror.curve));
    EXPECT_EQ(Bytes("a.mmc"), FileBytes(0x43435552, 256, 3, 8, 256, curve));
    EXPECT_EQ(Bytes("a.mmc").size(), 274u);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(Bytes("a.mmc").data()), 4), "RUCC");

    UserFilterParams filter = {-3, 300, 2, {}};
    std::iota(std::begin(filter.cells), std::end(filter.cells), -12);
    filter.cells[7] = 32768;
    filter.cells[8] = -32769;
    ASSERT_TRUE(WriteFilterFile(Path("a.udf").c_str(), filter));
    std::vector<i32> values(std::begin(filter.cells), std::end(filter.cells));
    values.insert(values.end(), {-3, 300, 2});
    EXPECT_EQ(Bytes("a.udf"), FileBytes(0x43554446, 5, 5, 16, 56, Words(values)));
    EXPECT_EQ(Bytes("a.udf").size(), 74u);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(Bytes("a.udf").data()), 4), "FDUC");
}

TEST_F(ParamFileTest, IsNotWrittenWhereThatCannotBe) {
    EXPECT_FALSE(WriteCurveFile(Path("no/a").c_str(), {}));
    EXPECT_FALSE(WriteFilterFile(Path("").c_str(), {}));
    EXPECT_TRUE(Names().empty());
}

TEST_F(ParamFileTest, IsRefusedWhenItIsShortOrOfAnotherKind) {
    const std::vector<u8> whole = FileBytes(kCurveFileMagic, 4, 0, 8, 4, {1, 2, 3, 4});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto end = whole.begin() + static_cast<std::ptrdiff_t>(length);
        EXPECT_EQ(ReadBack({whole.begin(), end}), 0u) << length;
    }
    EXPECT_TRUE(OwnedBlock(ReadBack(whole)));
    EXPECT_EQ(ReadBack(whole, kFilterFileMagic), 0u);
    EXPECT_EQ(ReadBack(FileBytes(kCurveFileMagic, 4, 0, 8, UINT32_MAX, {1, 2, 3, 4})), 0u);
    EXPECT_EQ(ReadParamFile(Path("nothing").c_str(), kCurveFileMagic), 0u);
    EXPECT_EQ(ReadParamFile(Path(".").c_str(), kCurveFileMagic), 0u);
}

// Such a file is longer than a block can be counted; nothing of it is read.
TEST_F(ParamFileTest, IsRefusedWhenItsPayloadIsHuge) {
    Put("huge", FileBytes(kCurveFileMagic, 256, 1, 8, UINT32_MAX, {7, 8, 9}));
    std::filesystem::resize_file(Path("huge"), 18 + u64{UINT32_MAX});
    FailAllocation(1);
    EXPECT_EQ(ReadParamFile(Path("huge").c_str(), kCurveFileMagic), 0u);
    EXPECT_EQ(AllocationCount(), 0u);
}

TEST_F(ParamFileTest, GivesNothingWhenMemoryIsShort) {
    const std::string path = Put("file", FileBytes(kCurveFileMagic, 1, 0, 8, 1, {1}));
    ExpectZeroWhenAnAllocationFails([&] { return ReadParamFile(path.c_str(), kCurveFileMagic); });
}

TEST_F(ParamFileTest, GivesAsMuchOfAFilterAsItHolds) {
    // Three columns and two rows, and the payload ends within the bias.
    std::vector<u8> payload = Words({1, 2, 3, 4, 5, 6, 7});
    payload.push_back(8);
    const std::string path = Put("f", FileBytes(kFilterFileMagic, 3, 2, 16, 15, payload));
    const auto file = ReadFilterFile(path.c_str());
    ASSERT_TRUE(file);
    EXPECT_EQ(file->cells[2], i16{3});
    EXPECT_EQ(file->cells[3], std::nullopt);
    EXPECT_EQ(file->cells[5], i16{4});
    EXPECT_EQ(file->scale, i16{7});
    EXPECT_EQ(file->bias, std::nullopt);
    EXPECT_EQ(file->symmetry, std::nullopt);
}

} // namespace

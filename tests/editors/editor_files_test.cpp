#include "editors/editor_files.h"
#include "editors/param_file.h"

#include "tests/pictures/scratch.h"

#include <numeric>
#include <sys/stat.h>

namespace {

void Append(std::vector<u8>& bytes, u32 value, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<u8>(value >> (8 * i)));
    }
}

std::vector<u8> FileBytes(u32 magic, u16 word1, u16 word2, u16 word3, u32 payloadSize,
                          const std::vector<u8>& payload) {
    std::vector<u8> bytes;
    Append(bytes, magic, 4);
    for (const u16 word : {word1, word2, word3}) {
        Append(bytes, word, 2);
    }
    Append(bytes, payloadSize, 4);
    Append(bytes, 0, 4);
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    return bytes;
}

std::vector<u8> Words(const std::vector<i32>& values) {
    std::vector<u8> bytes;
    for (const i32 value : values) {
        Append(bytes, static_cast<u32>(value), 2);
    }
    return bytes;
}

class ParamFileTest : public PictureTest {
protected:
    u32 ReadBack(const std::vector<u8>& bytes, u32 magic = kCurveFileMagic) const {
        return ReadParamFile(Put("file", bytes).c_str(), magic);
    }
};

TEST_F(ParamFileTest, WritesTheHeadAndThePayloadByteForByte) {
    std::vector<u8> curve(256);
    std::iota(curve.begin(), curve.end(), u8{0});
    const OwnedBlock payload = MakeBlock(curve);
    ASSERT_EQ(
        WriteParamFile(Path("a.mmc").c_str(), payload.Handle(), kCurveFileMagic, 256, 3, 8, 256),
        1);
    EXPECT_EQ(Bytes("a.mmc"), FileBytes(0x43435552, 256, 3, 8, 256, curve));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(Bytes("a.mmc").data()), 4), "RUCC");

    const OwnedBlock block(ReadParamFile(Path("a.mmc").c_str(), kCurveFileMagic));
    const std::vector<u8> bytes = BytesOf(block.Handle());
    ASSERT_EQ(bytes.size(), sizeof(ParamFile) + 256);
    EXPECT_TRUE(std::equal(curve.begin(), curve.end(), bytes.begin() + sizeof(ParamFile)));
}

TEST_F(ParamFileTest, IsNotWrittenWhereThatCannotBe) {
    const OwnedBlock payload = MakeBlock({1, 2, 3});
    EXPECT_EQ(WriteParamFile(Path("no/a").c_str(), payload.Handle(), 1, 0, 0, 0, 3), 0);
    EXPECT_EQ(WriteParamFile(Path("a").c_str(), payload.Handle(), 1, 0, 0, 0, 4), 0);
    EXPECT_EQ(WriteParamFile(Path("a").c_str(), 0, 1, 0, 0, 0, 1), 0);
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
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(ReadParamFile(Path("pipe").c_str(), kCurveFileMagic), 0u);
}

TEST_F(ParamFileTest, KeepsOnlyTheBeginningOfAHugePayload) {
    Put("huge", FileBytes(kCurveFileMagic, 256, 1, 8, UINT32_MAX, {7, 8, 9}));
    std::filesystem::resize_file(Path("huge"), 18 + u64{UINT32_MAX});
    const OwnedBlock block(ReadParamFile(Path("huge").c_str(), kCurveFileMagic));
    EXPECT_EQ(BlockSize(block.Handle()), sizeof(ParamFile) + kLargestKeptPayload);
}

TEST_F(ParamFileTest, GivesNothingWhenMemoryIsShort) {
    const std::string path = Put("file", FileBytes(kCurveFileMagic, 1, 0, 8, 1, {1}));
    ExpectZeroWhenAnAllocationFails([&] { return ReadParamFile(path.c_str(), kCurveFileMagic); });
}

TEST_F(ParamFileTest, FillsACurveAsFarAsItGoes) {
    struct {
        u16 entries;
        u32 payloadSize;
        std::size_t taken;
    } const cases[] = {{256, 256, 256}, {100, 256, 100}, {256, 10, 10}, {300, 300, 256}, {9, 0, 0}};
    for (const auto& test : cases) {
        const std::vector<u8> payload(test.payloadSize, 5);
        Put("c", FileBytes(kCurveFileMagic, test.entries, 4, 8, test.payloadSize, payload));
        MagicMirrorParams params = {};
        ASSERT_TRUE(ReadCurveFile(Path("c").c_str(), params));
        EXPECT_EQ(params.mapping, 4);
        EXPECT_EQ(std::count(std::begin(params.curve), std::end(params.curve), u8{5}),
                  static_cast<std::ptrdiff_t>(test.taken));
        EXPECT_EQ(test.taken < 256 ? params.curve[test.taken] : 0, 0);
    }
    MagicMirrorParams untouched = {9, {}};
    EXPECT_FALSE(ReadCurveFile(Path("nothing").c_str(), untouched));
    EXPECT_EQ(untouched.mapping, 9);
}

TEST_F(ParamFileTest, FillsAFilterAsFarAsItGoes) {
    UserFilterParams params = {};
    std::vector<i32> values(25);
    std::iota(values.begin(), values.end(), -12);
    values.insert(values.end(), {-3, 300, 2});
    Put("f", FileBytes(kFilterFileMagic, 5, 5, 16, 56, Words(values)));
    ASSERT_TRUE(ReadFilterFile(Path("f").c_str(), params));
    EXPECT_EQ(params.cells[0], -12);
    EXPECT_EQ(params.cells[24], 12);
    EXPECT_EQ(params.scale, -3);
    EXPECT_EQ(params.bias, 300);
    EXPECT_EQ(params.symmetry, 2);

    // Three columns and two rows, and the payload ends within the bias.
    std::vector<u8> payload = Words({1, 2, 3, 4, 5, 6, 7});
    payload.push_back(8);
    Put("f", FileBytes(kFilterFileMagic, 3, 2, 16, 15, payload));
    params = {};
    params.bias = 99;
    ASSERT_TRUE(ReadFilterFile(Path("f").c_str(), params));
    EXPECT_EQ(params.cells[2], 3);
    EXPECT_EQ(params.cells[3], 0);
    EXPECT_EQ(params.cells[5], 4);
    EXPECT_EQ(params.scale, 7);
    EXPECT_EQ(params.bias, 99);
}

} // namespace

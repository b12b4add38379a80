#include "tests/pictures/scratch.h"

#include <random>

namespace {

class DamagedPicture : public PictureTest {
protected:
    // A small file of every format and of the kinds that are read in ways of their own.
    std::vector<std::vector<u8>> Files() const {
        const OwnedBlock colour = MakeDib(ImageClass::Colour, 9, 7);
        const OwnedBlock palette = MakeDib(ImageClass::Palette4, 9, 7);
        const OwnedBlock grey = MakeDib(ImageClass::Grey, 9, 7);
        WritePicture(Path("1.bmp").c_str(), colour.Handle());
        WritePicture(Path("2.bmp").c_str(), palette.Handle());
        WritePicture(Path("3.png").c_str(), colour.Handle(), grey.Handle());
        WritePicture(Path("4.png").c_str(), palette.Handle());
        WritePicture(Path("5.jpg").c_str(), colour.Handle());
        WritePicture(Path("6.jpg").c_str(), grey.Handle());
        return {Bytes("1.bmp"), Bytes("2.bmp"), Bytes("3.png"),
                Bytes("4.png"), Bytes("5.jpg"), Bytes("6.jpg")};
    }
};

TEST_F(DamagedPicture, IsRefusedWhereverItsFileEnds) {
    for (const std::vector<u8>& whole : Files()) {
        ASSERT_EQ(TryRead(Put("whole", whole)), PictureResult::Ok);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::vector<u8> part(whole.begin(),
                                       whole.begin() + static_cast<std::ptrdiff_t>(length));
            const PictureResult result = TryRead(Put("part", part));
            // Only a file without so much as a signature may pass for something else.
            ASSERT_TRUE(result == PictureResult::Truncated ||
                        (length < 8 && result == PictureResult::NotAPicture))
                << length << " of " << whole.size() << ": " << DescribePictureResult(result);
        }
    }
}

TEST_F(DamagedPicture, WithAnyBytesChangedGivesAWholePictureOrNone) {
    std::mt19937 random(7);
    const int rounds = std::getenv("ZQ_LONG") != nullptr ? 20000 : 400;
    for (const std::vector<u8>& whole : Files()) {
        for (int round = 0; round < rounds; ++round) {
            std::vector<u8> file = whole;
            for (u32 changes = random() % 4 + 1; changes > 0; --changes) {
                file[random() % file.size()] = static_cast<u8>(random());
            }
            DibHandle dib = 0;
            DibHandle alpha = 0;
            const PictureResult result = ReadPicture(Put("a", file).c_str(), dib, &alpha);
            const OwnedBlock image(dib);
            const OwnedBlock mask(alpha);
            ASSERT_EQ(DibCopy(dib).Valid(), result == PictureResult::Ok);
        }
    }
}

TEST_F(DamagedPicture, IsToldFromWhatIsNoPictureAtAll) {
    std::filesystem::create_directory(Path("folder.png"));
    EXPECT_EQ(TryRead(Path("folder.png")), PictureResult::NotAFile);
    EXPECT_EQ(TryRead("/dev/zero"), PictureResult::NotAFile);
    EXPECT_EQ(TryRead(Path("nothing.png")), PictureResult::NoSuchFile);
    EXPECT_EQ(TryRead(Put("empty.png", {})), PictureResult::NotAPicture);
    EXPECT_EQ(TryRead(Put("text.png", {'h', 'e', 'l', 'l', 'o', ' ', 'y', 'o', 'u'})),
              PictureResult::NotAPicture);
}

TEST_F(DamagedPicture, IsNotLeftBehindWhenMemoryIsShort) {
    Files();
    for (const char* name : {"2.bmp", "3.png", "4.png", "5.jpg", "6.jpg"}) {
        DibHandle dib = 0;
        DibHandle alpha = 0;
        PictureResult result = PictureResult::Ok;
        FailEachAllocation(
            [&] { result = ReadPicture(Path(name).c_str(), dib, &alpha); },
            [&](bool failed) {
                EXPECT_EQ(result, failed ? PictureResult::TooLarge : PictureResult::Ok) << name;
                FreeBlock(dib);
                FreeBlock(alpha);
            });
    }
}

} // namespace

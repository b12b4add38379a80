#include "tests/pictures/scratch.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

class WrittenPicture : public PictureTest {
protected:
    const OwnedBlock dib_ = MakeDib(ImageClass::Colour, 200, 100);

    PictureResult Write(const std::string& path) const {
        return WritePicture(path.c_str(), dib_.Handle());
    }
};

// As on a disk that has no more room than this.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before_;
    void (*handler_)(int);
};

TEST_F(WrittenPicture, AppearsWholeOrNotAtAll) {
    for (const char* name : {"a.bmp", "a.png", "a.jpg"}) {
        // The limits end the writing in the head, among the pixels, and at the last flush.
        for (const rlim_t limit : {0u, 10u, 3000u}) {
            const FileSizeLimit full(limit);
            EXPECT_EQ(Write(Path(name)), PictureResult::CannotWrite) << name << ", " << limit;
        }
        EXPECT_TRUE(Names().empty());
    }
}

TEST_F(WrittenPicture, LeavesTheOneBeforeWhenItFails) {
    const std::vector<u8> before = {1, 2, 3};
    const std::string path = Put("a.png", before);
    {
        const FileSizeLimit full(3000);
        EXPECT_EQ(Write(path), PictureResult::CannotWrite);
    }
    EXPECT_EQ(Bytes("a.png"), before);
    EXPECT_EQ(Names().size(), 1u);
}

TEST_F(WrittenPicture, TakesThePlaceAndTheRightsOfTheOneBefore) {
    const std::string path = Put("a.png", {1, 2, 3});
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    std::filesystem::create_symlink("a.png", Path("link.png"));
    EXPECT_EQ(Write(Path("link.png")), PictureResult::Ok);
    EXPECT_TRUE(std::filesystem::is_symlink(Path("link.png")));
    EXPECT_EQ(TryRead(path), PictureResult::Ok);
    struct stat about = {};
    ASSERT_EQ(stat(path.c_str(), &about), 0);
    EXPECT_EQ(about.st_mode & 0777, 0640u);
}

TEST_F(WrittenPicture, SaysWhereItCannotBe) {
    std::filesystem::create_directory(Path("folder.png"));
    std::filesystem::create_symlink("/dev/full", Path("full.png"));
    Put("file", {1});
    EXPECT_EQ(Write(Path("folder.png")), PictureResult::NotAFile);
    EXPECT_EQ(Write(Path("full.png")), PictureResult::NotAFile);
    EXPECT_EQ(Write(Path("nowhere/a.png")), PictureResult::NoSuchFile);
    EXPECT_EQ(Write(Path("file/a.png")), PictureResult::NoSuchFile);
    for (const char* name : {"a", "a.gif", "png", ".png/a"}) {
        EXPECT_EQ(Write(Path(name)), PictureResult::UnknownExtension) << name;
    }
}

TEST_F(WrittenPicture, NeedsAPictureAndAMaskOfItsSize) {
    const OwnedBlock mask = MakeDib(ImageClass::Grey, 199, 100);
    EXPECT_EQ(WritePicture(Path("a.png").c_str(), dib_.Handle(), mask.Handle()),
              PictureResult::NoPicture);
    EXPECT_EQ(WritePicture(Path("a.png").c_str(), 0), PictureResult::NoPicture);
    EditHeader(dib_.Handle(), [](DibHeader& header) { header.biHeight = 101; });
    EXPECT_EQ(Write(Path("a.png")), PictureResult::NoPicture);
    EXPECT_TRUE(Names().empty());
}

} // namespace

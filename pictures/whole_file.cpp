#include "pictures/whole_file.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A link is followed, so that it stays a link and what it names is replaced.
std::string FollowLinks(const char* path) {
    char* real = realpath(path, nullptr);
    std::string followed = real != nullptr ? real : path;
    std::free(real);
    return followed;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "" : path.substr(0, slash + 1);
}

// Opens a new file in `folder` with the rights that any new file gets.
int OpenTemporary(const std::string& folder, std::string& name) {
    static constexpr int kAttempts = 1000;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        name = folder + ".zq-" + std::to_string(getpid()) + "-" + std::to_string(attempt);
        const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file >= 0 || errno != EEXIST) {
            return file;
        }
    }
    return -1;
}

} // namespace

PictureResult FileFailure(PictureResult otherwise) {
    switch (errno) {
    case ENOENT:
    case ENOTDIR:
        return PictureResult::NoSuchFile;
    case EACCES:
    case EPERM:
    case EROFS:
        return PictureResult::NoPermission;
    case EISDIR:
        return PictureResult::NotAFile;
    case ENOSPC:
    case EDQUOT:
        return PictureResult::DiskFull;
    default:
        return otherwise;
    }
}

WholeFile::~WholeFile() {
    if (stream_ != nullptr) {
        std::fclose(stream_);
    }
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
    }
}

PictureResult WholeFile::Create(const char* path) {
    path_ = FollowLinks(path);
    struct stat present = {};
    const bool exists = stat(path_.c_str(), &present) == 0;
    if (exists && !S_ISREG(present.st_mode)) {
        return PictureResult::NotAFile;
    }
    if (exists && access(path_.c_str(), W_OK) != 0) {
        return FileFailure(PictureResult::CannotWrite);
    }
    std::string name;
    const int file = OpenTemporary(FolderOf(path_), name);
    if (file < 0) {
        return FileFailure(PictureResult::CannotWrite);
    }
    temporary_ = name;
    stream_ = fdopen(file, "wb");
    if (stream_ == nullptr) {
        close(file);
        return PictureResult::CannotWrite;
    }
    if (exists && fchmod(file, present.st_mode & 07777) != 0) {
        return FileFailure(PictureResult::CannotWrite);
    }
    return PictureResult::Ok;
}

PictureResult WholeFile::Commit() {
    const bool written = std::fflush(stream_) == 0 && fsync(fileno(stream_)) == 0;
    PictureResult result = written ? PictureResult::Ok : FileFailure(PictureResult::CannotWrite);
    if (std::fclose(stream_) != 0 && written) {
        result = FileFailure(PictureResult::CannotWrite);
    }
    stream_ = nullptr;
    if (result != PictureResult::Ok) {
        return result;
    }
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) {
        return FileFailure(PictureResult::CannotWrite);
    }
    temporary_.clear();
    return PictureResult::Ok;
}

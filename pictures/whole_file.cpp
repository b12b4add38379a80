#include "pictures/whole_file.h"

#include "platform/system/system.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Opens a new file in `folder`.
std::FILE* OpenTemporary(const std::string& folder, std::string& name) {
    static constexpr int kAttempts = 1000;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        name = folder + ".zq-" + std::to_string(getpid()) + "-" + std::to_string(attempt);
        std::FILE* file = CreateNewFile(name.c_str());
        if (file != nullptr || errno != EEXIST) {
            return file;
        }
    }
    return nullptr;
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
    default:
        return IsDiskFull(errno) ? PictureResult::DiskFull : otherwise;
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
    // So that a link stays a link and what it names is replaced.
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
    stream_ = OpenTemporary(FolderOf(path_), name);
    if (stream_ == nullptr) {
        return FileFailure(PictureResult::CannotWrite);
    }
    temporary_ = name;
    if (exists && !CopyRights(path_.c_str(), stream_)) {
        return FileFailure(PictureResult::CannotWrite);
    }
    return PictureResult::Ok;
}

PictureResult WholeFile::Commit() {
    const bool written = FlushToDisk(stream_);
    PictureResult result = written ? PictureResult::Ok : FileFailure(PictureResult::CannotWrite);
    if (std::fclose(stream_) != 0 && written) {
        result = FileFailure(PictureResult::CannotWrite);
    }
    stream_ = nullptr;
    if (result != PictureResult::Ok) {
        return result;
    }
    if (!MoveFileOver(temporary_.c_str(), path_.c_str())) {
        return FileFailure(PictureResult::CannotWrite);
    }
    temporary_.clear();
    return PictureResult::Ok;
}

// Files by number, as the operating system counts them.
#include "platform/win32.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr UINT kAccessMask = 3;
constexpr mode_t kNewFileMode = 0666;

int FlagsOf(UINT style) {
    const UINT access = style & kAccessMask;
    const int flags = access == OF_READWRITE ? O_RDWR : access == OF_WRITE ? O_WRONLY : O_RDONLY;
    // Pipes must not hold the program up.
    return flags | ((style & OF_CREATE) != 0 ? O_CREAT | O_TRUNC : 0) | O_CLOEXEC | O_NONBLOCK;
}

bool IsFolder(int file) {
    struct stat status;
    return fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
}

// Repeats an operation until `bytes` are done or it fails; gives how many were done.
template <class Transfer>
UINT TransferAll(UINT bytes, Transfer transfer) {
    UINT done = 0;
    while (done < bytes) {
        const ssize_t now = transfer(done, std::min<std::size_t>(bytes - done, INT_MAX));
        if (now < 0 && errno == EINTR) {
            continue;
        }
        if (now < 0 && done == 0) {
            return static_cast<UINT>(HFILE_ERROR);
        }
        if (now <= 0) {
            break;
        }
        done += static_cast<UINT>(now);
    }
    return done;
}

} // namespace

extern "C" {

HFILE OpenFile(LPCSTR name, OFSTRUCT* file, UINT style) {
    if (name == nullptr || file == nullptr) {
        return HFILE_ERROR;
    }
    *file = {};
    file->cBytes = sizeof(OFSTRUCT);
    std::strncpy(file->szPathName, name, sizeof(file->szPathName) - 1);
    const int opened = open(name, FlagsOf(style), kNewFileMode);
    if (opened >= 0 && IsFolder(opened)) {
        close(opened);
        return HFILE_ERROR;
    }
    return opened;
}

UINT _lread(HFILE file, LPVOID buffer, UINT bytes) {
    return TransferAll(bytes, [=](UINT done, std::size_t count) {
        return read(file, static_cast<char*>(buffer) + done, count);
    });
}

UINT _lwrite(HFILE file, LPCSTR buffer, UINT bytes) {
    return TransferAll(
        bytes, [=](UINT done, std::size_t count) { return write(file, buffer + done, count); });
}

LONG _llseek(HFILE file, LONG offset, int origin) {
    const off_t place = lseek(file, offset, origin);
    return place < 0 || place > INT_MAX ? HFILE_ERROR : static_cast<LONG>(place);
}

HFILE _lclose(HFILE file) {
    return close(file) == 0 ? 0 : HFILE_ERROR;
}

} // extern "C"

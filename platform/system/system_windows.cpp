#include "platform/system/system.h"

#include "platform/win32.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

namespace {

void (*stopHandler)(int signal);

// A handler is taken away when it is called.
void OnStopSignal(int signal) {
    std::signal(signal, OnStopSignal);
    stopHandler(signal);
}

int ErrnoOf(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
        return EACCES;
    case ERROR_DISK_FULL:
        return ENOSPC;
    default:
        return EIO;
    }
}

} // namespace

std::FILE* OpenOrdinaryFile(const char* path, u64& bytes) {
    struct __stat64 about = {};
    if (_stat64(path, &about) != 0) {
        return nullptr;
    }
    if (!S_ISREG(about.st_mode)) {
        errno = EISDIR;
        return nullptr;
    }
    bytes = static_cast<u64>(about.st_size);
    return std::fopen(path, "rb");
}

std::string FollowLinks(const char* path) {
    return path;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\:");
    return slash == std::string::npos ? "" : path.substr(0, slash + 1);
}

std::FILE* CreateNewFile(const char* path) {
    const int descriptor =
        _open(path, _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
    if (descriptor < 0) {
        return nullptr;
    }
    std::FILE* file = _fdopen(descriptor, "wb");
    if (file == nullptr) {
        _close(descriptor);
        _unlink(path);
    }
    return file;
}

// A folder hands its rights down to what is in it.
bool CopyRights(const char*, std::FILE*) {
    return true;
}

bool FlushToDisk(std::FILE* file) {
    return std::fflush(file) == 0 && _commit(_fileno(file)) == 0;
}

bool MoveFileOver(const char* from, const char* to) {
    if (MoveFileExA(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) {
        return true;
    }
    errno = ErrnoOf(GetLastError());
    return false;
}

bool IsDiskFull(int error) {
    return error == ENOSPC;
}

// No program has more than its addresses.
u64 PhysicalMemory() {
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof(status);
    if (GlobalMemoryStatusEx(&status) == 0) {
        return 0;
    }
    return status.ullTotalPhys < status.ullTotalVirtual ? status.ullTotalPhys
                                                        : status.ullTotalVirtual;
}

bool ErrorsGoToTerminal() {
    const HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(errors, &mode) != 0 &&
           SetConsoleMode(errors, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

void CatchStopRequests(void (*handler)(int signal)) {
    stopHandler = handler;
    for (const int signal : {SIGINT, SIGTERM, SIGBREAK}) {
        std::signal(signal, OnStopSignal);
    }
}

#include "platform/system/system.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

std::FILE* OpenOrdinaryFile(const char* path, u64& bytes) {
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return nullptr;
    }
    struct stat about = {};
    if (fstat(descriptor, &about) != 0 || !S_ISREG(about.st_mode)) {
        close(descriptor);
        errno = EISDIR;
        return nullptr;
    }
    bytes = static_cast<u64>(about.st_size);
    std::FILE* file = fdopen(descriptor, "rb");
    if (file == nullptr) {
        close(descriptor);
    }
    return file;
}

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

std::FILE* CreateNewFile(const char* path) {
    const int descriptor = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        return nullptr;
    }
    std::FILE* file = fdopen(descriptor, "wb");
    if (file == nullptr) {
        close(descriptor);
        unlink(path);
    }
    return file;
}

bool CopyRights(const char* model, std::FILE* file) {
    struct stat about = {};
    return stat(model, &about) == 0 && fchmod(fileno(file), about.st_mode & 07777) == 0;
}

bool FlushToDisk(std::FILE* file) {
    return std::fflush(file) == 0 && fsync(fileno(file)) == 0;
}

bool MoveFileOver(const char* from, const char* to) {
    return std::rename(from, to) == 0;
}

bool IsDiskFull(int error) {
    return error == ENOSPC || error == EDQUOT;
}

u64 PhysicalMemory() {
    return static_cast<u64>(sysconf(_SC_PHYS_PAGES)) * static_cast<u64>(sysconf(_SC_PAGESIZE));
}

bool ErrorsGoToTerminal() {
    const char* terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) == 1 && terminal != nullptr &&
           std::string_view(terminal) != "dumb";
}

void CatchStopRequests(void (*handler)(int signal)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        const bool ignored =
            sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN;
        // A program that was started to outlive its terminal does.
        if (signal != SIGHUP || !ignored) {
            sigaction(signal, &action, nullptr);
        }
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

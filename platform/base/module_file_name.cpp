#include "platform/win32.h"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>

extern "C" DWORD GetModuleFileNameA(HINSTANCE instance, LPSTR buffer, DWORD size) {
    Dl_info module{};
    if (buffer == nullptr || size == 0 || dladdr(instance, &module) == 0 ||
        module.dli_fname == nullptr) {
        return 0;
    }
    const std::size_t length = std::min<std::size_t>(std::strlen(module.dli_fname), size - 1);
    std::memcpy(buffer, module.dli_fname, length);
    buffer[length] = '\0';
    return static_cast<DWORD>(length);
}

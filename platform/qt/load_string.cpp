#include "platform/base/resource_file.h"
#include "platform/types.h"
#include "platform/win32.h"

#include <algorithm>

int LoadStringA(HINSTANCE instance, UINT id, LPSTR buffer, int size) {
    if (buffer == nullptr || size < 1) {
        return 0;
    }
    const auto text =
        id <= 0xFFFF ? LoadStringResource(instance, static_cast<u16>(id)) : std::nullopt;
    const std::size_t room = static_cast<std::size_t>(size) - 1;
    const std::size_t length = text ? std::min(text->size(), room) : 0;
    if (text) {
        std::copy_n(text->data(), length, buffer);
    }
    buffer[length] = '\0';
    return static_cast<int>(length);
}

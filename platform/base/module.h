// What an instance handle stands for elsewhere than on Windows: the resources that are linked into
// the library, as windres writes them (.res).
#pragma once

#include "platform/types.h"
#include "platform/win32.h"

struct HINSTANCE__ {
    const u8* resources;
    std::size_t resourceBytes;
};

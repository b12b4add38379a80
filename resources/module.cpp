#include "resources/module.h"

#include "platform/base/module.h"

extern "C" const u8 zquiResources[];
extern "C" const u8 zquiResourcesEnd[];

HINSTANCE ResourceModule() {
    static const HINSTANCE__ module{zquiResources,
                                    static_cast<std::size_t>(zquiResourcesEnd - zquiResources)};
    return &module;
}

#include "resources/module.h"

// Lies in the module itself.
static const char place = 0;

HINSTANCE ResourceModule() {
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       &place, &module);
    return module;
}

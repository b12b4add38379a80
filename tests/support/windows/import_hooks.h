// For tests on Windows: functions that stand in for the system's.
//
// A program calls the system's DLLs through one pointer for each function, which the import library
// has. Where a test program has a pointer of the same name, all calls from it go there.
#pragma once

#include "platform/win32.h"

// The system's own function.
inline FARPROC SystemFunction(const char* module, const char* name) {
    return GetProcAddress(LoadLibraryA(module), name);
}

// HOOK_IMPORT(module, name, bytes): calls of `name`, whose parameters take so many bytes, go to
// Hooked<name>, which calls the system's as System<name>.
#define HOOK_IMPORT(module, name, bytes)                                                           \
    const auto System##name =                                                                      \
        reinterpret_cast<decltype(&name)>(reinterpret_cast<void*>(SystemFunction(module, #name))); \
    extern "C" {                                                                                   \
    [[gnu::used]] decltype(&name) pointerTo##name __asm__("__imp__" #name                          \
                                                          "@" #bytes) = Hooked##name;              \
    }

// The loader's call into the DLL.
#include "library/startup.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD, LPVOID) {
    return LibraryEntry(instance);
}

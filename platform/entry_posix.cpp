// The loader's call into the library, elsewhere than on Windows.
#include "library/startup.h"
#include "resources/module.h"

__attribute__((constructor)) static void EnterLibrary() {
    LibraryEntry(ResourceModule());
}

// What happens when the library is loaded.
#pragma once

#include "platform/win32.h"

// The library's own instance; dialogs and resources are loaded through it.
extern HINSTANCE moduleInstance;

// Called by the loader at process and thread attach and detach. Stores the instance and registers
// the preview window classes; always reports success. After the first call the registering simply
// fails, and nothing depends on that.
BOOL LibraryEntry(HINSTANCE instance);

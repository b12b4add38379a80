// What happens when the library is loaded.
#pragma once

#include "platform/win32.h"

// Called by the loader at process and thread attach and detach. Stores the instance, registers the
// preview window classes for good and always reports success. After the first call the registering
// simply fails, and nothing depends on that.
BOOL LibraryEntry(HINSTANCE instance);

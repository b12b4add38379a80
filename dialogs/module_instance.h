// The library's own instance: dialogs and resources are loaded through it.
#pragma once

#include "platform/win32.h"

// Stored at start-up.
extern HINSTANCE moduleInstance;

// The library's own module, elsewhere than on Windows: its resources.
#pragma once

#include "platform/win32.h"

HINSTANCE ResourceModule();

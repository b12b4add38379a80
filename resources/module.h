// The module that the resources are linked into.
#pragma once

#include "platform/win32.h"

HINSTANCE ResourceModule();

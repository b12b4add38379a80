// The state of the engine's random numbers.
#pragma once

#include "platform/types.h"
#include <zq/platform.h>

// This thread's state, 1 at the start. It lies in a shared library, so that a host with an engine
// of its own and the library's previews draw from one stream. On Windows every module has its own.
ZQ_API u32& RandomState();

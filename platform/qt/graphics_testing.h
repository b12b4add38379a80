// For tests only.
#pragma once

#include <zq/platform.h>

#include <cstddef>

// Drawing objects that were created and not deleted. Stock objects, fonts of dialog templates and
// cursors live as long as the process and do not count.
ZQ_API std::size_t LiveGdiObjectCount();

// Device contexts that were opened, for a paint or in memory, and not closed.
ZQ_API std::size_t LiveDeviceContextCount();

// The background that every paint of every preview hands to the imaging library.
#pragma once

#include "platform/types.h"

// All 0 at the start; a change shows at the next paint.
extern i32 backgroundWord0;
extern u32 backgroundWord1;
extern u32 backgroundWord2;

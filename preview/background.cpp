#include "preview/background.h"

i32 backgroundWord0 = 0;
u32 backgroundWord1 = 0;
u32 backgroundWord2 = 0;

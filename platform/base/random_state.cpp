#include "platform/base/random_state.h"

u32& RandomState() {
    thread_local u32 state = 1;
    return state;
}

#include "platform/types.h"
#include "platform/win32.h"

namespace {

// Moved past the ends of its type a coordinate wraps, without undefined behaviour.
LONG Moved(LONG coordinate, int distance) {
    return static_cast<LONG>(static_cast<u32>(coordinate) + static_cast<u32>(distance));
}

} // namespace

extern "C" {

BOOL OffsetRect(RECT* rect, int dx, int dy) {
    if (rect == nullptr) {
        return 0;
    }
    rect->left = Moved(rect->left, dx);
    rect->top = Moved(rect->top, dy);
    rect->right = Moved(rect->right, dx);
    rect->bottom = Moved(rect->bottom, dy);
    return 1;
}

BOOL EqualRect(const RECT* first, const RECT* second) {
    return first != nullptr && second != nullptr && first->left == second->left &&
           first->top == second->top && first->right == second->right &&
           first->bottom == second->bottom;
}

BOOL IsRectEmpty(const RECT* rect) {
    return rect == nullptr || rect->left >= rect->right || rect->top >= rect->bottom;
}

} // extern "C"

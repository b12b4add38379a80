// The window of a pane: an image window, two zoom buttons and a percent label between them.
#pragma once

#include "platform/win32.h"

#include <cstdint>

LRESULT CALLBACK PreviewProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

inline HBRUSH SystemColourBrush(int colour) {
    return reinterpret_cast<HBRUSH>(static_cast<std::uintptr_t>(colour + 1));
}

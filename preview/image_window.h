// The window inside a pane that shows its picture and lets it be dragged.
#pragma once

#include "platform/win32.h"

LRESULT CALLBACK ImageProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Making windows of every kind.
#pragma once

#include "platform/qt/window.h"

struct WindowParams {
    std::string className;
    std::string text;
    DWORD style;
    DWORD exStyle;
    int x, y, width, height;
    HWND parent;
    int id;
    HINSTANCE instance;
    LPVOID createParams;
};

// Null when the class is unknown, the parent is stale or the window refuses to be.
HWND MakeWindow(const WindowParams& params);

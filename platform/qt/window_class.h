// Window classes: plain descriptions, which touch no Qt object.
#pragma once

#include "platform/win32.h"

#include <string>
#include <string_view>

constexpr const char* kDialogClassName = "#32770";

struct WindowClass {
    std::string name;
    ATOM atom;
    UINT style;
    WNDPROC procedure;
    int extraBytes;
    HCURSOR cursor;
    HBRUSH background;
};

bool SameClassName(std::string_view one, std::string_view other);

// Null when no class of that name is registered. The address holds until the class goes.
const WindowClass* FindWindowClass(std::string_view name);

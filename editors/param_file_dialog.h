// Asks for the names of curve and filter files.
#pragma once

#include "platform/win32.h"

struct ParamFileKind {
    const char* filter; // as OPENFILENAMEA has it
    const char* extension;
    bool startsAtLibrary; // the dialog is offered the library's own place as its folder
};

// The name that the user gives; null when there is none. It stays until the next call.
const char* AskForParamFile(HWND owner, const ParamFileKind& kind, const char* title);
const char* AskForNewParamFile(HWND owner, const ParamFileKind& kind, const char* title);

// The command line of zqhost.
#pragma once

#include "platform/types.h"

#include <string>

struct HostOptions {
    std::string file;
    i32 effect = 0; // 0: no dialog at once
    std::string shots;
    bool help = false;
};

// False with a line in `error` for arguments that mean nothing.
bool ParseOptions(int argc, const char* const* argv, HostOptions& options, std::string& error);

extern const char* const kHostUsage;

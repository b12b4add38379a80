// What zqfx can do. Each gives the exit status.
#pragma once

#include "tools/command_line.h"

enum ExitStatus : int {
    kDone = 0,
    kNoPicture = 1,  // the effect gave none
    kWrongUsage = 2, // or a file that cannot be read or written
    kStopped = 130,  // by a signal
};

// Every effect with its number, name and parameters, one line each.
void PrintEffectList();

// What one effect does and takes.
void PrintEffectHelp(const EffectDescription& effect);

int RunOnFiles(const CommandLine& commandLine);

// Writes "zqfx: ..." and a line end to stderr.
void Complain(const std::string& what);

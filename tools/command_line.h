// What the words of zqfx's command line ask for.
#pragma once

#include "tools/effect_table.h"

#include <string>
#include <string_view>
#include <vector>

enum class Command { Help, Version, List, EffectHelp, Run };

struct CommandLine {
    Command command = Command::Help;
    const EffectDescription* effect = nullptr;
    std::string input;
    std::string output;
    std::vector<std::string> assignments; // name=value
    std::string record;                   // hexadecimal digits
    bool hasRecord = false;
    std::string mask;
    std::string maskOutput;
};

// False with one line in `error` that says what is wrong.
bool ParseCommandLine(int argc, const char* const* argv, CommandLine& commandLine,
                      std::string& error);

// The effect of a number or name; case, hyphens, underscores and blanks of a name do not matter.
// Null with one line in `error` that may name the nearest one.
const EffectDescription* FindEffectByWord(std::string_view word, std::string& error);

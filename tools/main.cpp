// zqfx, the effects on the command line.
#include "tools/commands.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

const char* const kUsage =
    "usage: zqfx list\n"
    "       zqfx run EFFECT IN OUT [name=value ...]\n"
    "       zqfx run EFFECT --help\n"
    "\n"
    "Runs an image effect on a picture. EFFECT is a number or a name; 'zqfx list'\n"
    "shows all with their parameters. IN and OUT are BMP, PNG or JPEG pictures.\n"
    "\n"
    "  --record HEX     give the effect's record as raw bytes, not by name=value\n"
    "  --mask FILE      run the effect on a layer with this mask\n"
    "  --mask-out FILE  write the layer's mask after the effect\n"
    "  --help           show this text, or with an EFFECT its parameters\n"
    "  --version        show the version\n"
    "\n"
    "Exit status: 0 when OUT is written, 1 when the effect gives no picture, 2 for\n"
    "wrong usage or a file that cannot be read or written, 130 when stopped.\n";

// What was printed may not have reached its end: a full disk shows only here.
int FinishOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        Complain(std::string("cannot write: ") + std::strerror(errno));
        return kWrongUsage;
    }
    return kDone;
}

} // namespace

void Complain(const std::string& what) {
    std::fprintf(stderr, "zqfx: %s\n", what.c_str());
}

int main(int argc, char** argv) {
    CommandLine commandLine;
    std::string error;
    if (!ParseCommandLine(argc, argv, commandLine, error)) {
        Complain(error);
        return kWrongUsage;
    }
    switch (commandLine.command) {
    case Command::Run:
        return RunOnFiles(commandLine);
    case Command::Help:
        std::fputs(kUsage, stdout);
        break;
    case Command::Version:
        std::puts("zqfx " ZQ_VERSION);
        break;
    case Command::List:
        PrintEffectList();
        break;
    case Command::EffectHelp:
        PrintEffectHelp(*commandLine.effect);
        break;
    }
    return FinishOutput();
}

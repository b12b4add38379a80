#include "host/options.h"

#include "dialogs/catalogue.h"

#include <charconv>
#include <string_view>

const char* const kHostUsage =
    "usage: zqhost [--effect N] [FILE]\n"
    "       zqhost --shots DIR [--effect N] [FILE]\n"
    "\n"
    "A small image editor. FILE is a BMP, PNG or JPEG picture.\n"
    "\n"
    "  --effect N   open the dialog of effect N at once\n"
    "  --shots DIR  open each dialog and the Effect Browser in turn, or the dialog of\n"
    "               effect N, without a person, and write a picture of it into DIR\n"
    "  --help       show this text\n"
    "\n"
    "Without FILE, --effect and --shots take a sample picture.\n"
    "Exit status: 0, 1 when a picture of a dialog could not be made, 2 for wrong\n"
    "usage or a file that cannot be read.\n";

namespace {

bool ParseEffect(std::string_view text, i32& effect, std::string& error) {
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), effect);
    if (failure != std::errc() || end != text.data() + text.size() ||
        FindEffectRow(effect) == nullptr) {
        error = "there is no dialog of effect '" + std::string(text) + "'";
        return false;
    }
    return true;
}

bool TakeFile(std::string_view text, HostOptions& options, std::string& error) {
    if (!options.file.empty() || text.empty()) {
        error = text.empty() ? "a file's name is empty" : "more than one file is given";
        return false;
    }
    options.file = text;
    return true;
}

} // namespace

bool ParseOptions(int argc, const char* const* argv, HostOptions& options, std::string& error) {
    bool onlyFiles = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (onlyFiles || word.empty() || word[0] != '-') {
            if (!TakeFile(word, options, error)) {
                return false;
            }
        } else if (word == "--") {
            onlyFiles = true;
        } else if (word == "--help") {
            options.help = true;
        } else if (word == "--effect" || word == "--shots") {
            if (++i == argc || argv[i][0] == '\0') {
                error = std::string(word) + " needs a value";
                return false;
            }
            if (word == "--shots") {
                options.shots = argv[i];
            } else if (!ParseEffect(argv[i], options.effect, error)) {
                return false;
            }
        } else {
            error = "unknown option '" + std::string(word) + "'";
            return false;
        }
    }
    return true;
}

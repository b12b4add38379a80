#include "tools/command_line.h"

#include "tools/words.h"

#include <algorithm>

namespace {

struct Option {
    const char* name;
    std::string CommandLine::*value;
};
constexpr Option kRunOptions[] = {
    {"--record", &CommandLine::record},
    {"--mask", &CommandLine::mask},
    {"--mask-out", &CommandLine::maskOutput},
};

// The names that a mistyped one may stand for: those that hold it, else the nearest one.
std::vector<std::string> LikelyNames(const std::string& plain) {
    std::vector<std::string> holders;
    const char* nearest = nullptr;
    std::size_t best = plain.size() / 3 + 1;
    for (const EffectDescription& effect : EffectTable()) {
        const std::string name = PlainWord(effect.name);
        if (plain.size() >= 3 && name.find(plain) != name.npos) {
            holders.push_back(effect.name);
        }
        const std::size_t distance = WordDistance(plain, name);
        if (distance < best) {
            best = distance;
            nearest = effect.name;
        }
    }
    if (holders.empty() && nearest != nullptr) {
        holders.push_back(nearest);
    }
    return holders;
}

// The words behind `zqfx run`, one after the other.
class RunWords {
public:
    RunWords(CommandLine& commandLine, std::string& error)
        : commandLine_(commandLine), error_(error) {}

    bool Take(std::span<const char* const> words) {
        bool options = true;
        for (std::size_t i = 0; i < words.size(); ++i) {
            const std::string_view word = words[i];
            if (options && word == "--") {
                options = false;
            } else if (options && (word == "--help" || word == "-h")) {
                help_ = true;
            } else if (options && word.starts_with('-') && word != "-") {
                if (!TakeOption(word, words.subspan(i + 1), i)) {
                    return false;
                }
            } else if (!TakePlainWord(word)) {
                return false;
            }
        }
        return Finish();
    }

private:
    bool Fail(const std::string& error) {
        error_ = error;
        return false;
    }

    // `--name VALUE` or `--name=VALUE`.
    bool TakeOption(std::string_view word, std::span<const char* const> rest, std::size_t& index) {
        const std::size_t equals = word.find('=');
        const std::string name(word.substr(0, equals));
        const auto option = std::find_if(std::begin(kRunOptions), std::end(kRunOptions),
                                         [&](const Option& known) { return name == known.name; });
        if (option == std::end(kRunOptions)) {
            return Fail(Concat({"unknown option '", name,
                                "'; 'zqfx run' has --record, --mask, --mask-out and --help"}));
        }
        std::string value;
        if (equals != word.npos) {
            value = word.substr(equals + 1);
        } else if (!rest.empty()) {
            value = rest[0];
            ++index;
        }
        const bool isRecord = option->value == &CommandLine::record;
        if (value.empty() && !(isRecord && equals != word.npos)) {
            return Fail(name + " needs a value");
        }
        if (!(commandLine_.*option->value).empty()) {
            return Fail(name + " is given twice");
        }
        commandLine_.hasRecord |= isRecord;
        commandLine_.*option->value = value;
        return true;
    }

    bool TakePlainWord(std::string_view word) {
        ++plainWords_;
        if (plainWords_ == 1) {
            commandLine_.effect = FindEffectByWord(word, error_);
            return commandLine_.effect != nullptr;
        }
        if (plainWords_ <= 3) {
            if (word.empty()) {
                return Fail("the name of a file is empty");
            }
            (plainWords_ == 2 ? commandLine_.input : commandLine_.output) = word;
            return true;
        }
        if (word.find('=') == word.npos) {
            return Fail(Concat({"'", word, "' is not of the form name=value"}));
        }
        commandLine_.assignments.emplace_back(word);
        return true;
    }

    bool Finish() {
        if (help_) {
            commandLine_.command =
                commandLine_.effect != nullptr ? Command::EffectHelp : Command::Help;
            return true;
        }
        if (plainWords_ < 3) {
            return Fail("usage: zqfx run EFFECT IN OUT [name=value ...]");
        }
        if (commandLine_.hasRecord && !commandLine_.assignments.empty()) {
            return Fail("--record and name=value exclude each other");
        }
        if (!commandLine_.maskOutput.empty() && commandLine_.mask.empty()) {
            return Fail("--mask-out needs --mask");
        }
        return true;
    }

    CommandLine& commandLine_;
    std::string& error_;
    std::size_t plainWords_ = 0;
    bool help_ = false;
};

} // namespace

const EffectDescription* FindEffectByWord(std::string_view word, std::string& error) {
    const std::string plain = PlainWord(word);
    for (const EffectDescription& effect : EffectTable()) {
        if (plain == PlainWord(effect.name) || plain == PlainWord(effect.title) ||
            word == std::to_string(effect.id)) {
            return &effect;
        }
    }
    const std::vector<std::string> likely = LikelyNames(plain);
    const std::string hint = likely.empty()
                                 ? "'zqfx list' shows all"
                                 : Concat({"did you mean ", JoinWords(likely, "or"), "?"});
    error = Concat({"there is no effect '", word, "'; ", hint});
    return nullptr;
}

bool ParseCommandLine(int argc, const char* const* argv, CommandLine& commandLine,
                      std::string& error) {
    const std::span<const char* const> words(argv, static_cast<std::size_t>(argc));
    if (words.size() < 2) {
        error = "usage: zqfx list | run EFFECT IN OUT [name=value ...] | --help | --version";
        return false;
    }
    const std::string_view command = words[1];
    const auto rest = words.subspan(2);
    if (command == "run") {
        commandLine.command = Command::Run;
        return RunWords(commandLine, error).Take(rest);
    }
    const bool helps = command == "--help" || command == "-h" || command == "help";
    if (!helps && command != "--version" && command != "list") {
        error = Concat({"there is no command '", command, "'; there are list and run"});
        return false;
    }
    commandLine.command = helps                    ? Command::Help
                          : command == "--version" ? Command::Version
                                                   : Command::List;
    if (command == "list" && !rest.empty() && std::string_view(rest[0]) == "--help") {
        commandLine.command = Command::Help;
        return true;
    }
    if (!rest.empty()) {
        error = Concat({command, " takes no more words, but '", rest[0], "' follows"});
        return false;
    }
    return true;
}

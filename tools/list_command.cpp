#include "tools/commands.h"
#include "tools/record_builder.h"
#include "tools/words.h"

#include <algorithm>
#include <cstdio>

namespace {

bool IsValue(const EffectParameter& parameter) {
    return parameter.count == 1 && parameter.kind != ParameterKind::File;
}

const u8* Defaults(const EffectDescription& effect) {
    return static_cast<const u8*>(effect.defaults);
}

// name=default, or name=FILE or name=LIST where the default is no single value.
std::string Summary(const EffectDescription& effect, const EffectParameter& parameter) {
    const std::string name = Concat({parameter.name, "="});
    if (IsValue(parameter)) {
        return name + FormatValue(parameter, ParameterValue(parameter, Defaults(effect)));
    }
    return name + (parameter.kind == ParameterKind::Numbers ? "LIST" : "FILE");
}

bool HasNoUpperEnd(const EffectParameter& parameter) {
    return parameter.kind == ParameterKind::Number && parameter.largest == INT32_MAX;
}

// name= and what may follow, without blanks, so that it can be split.
std::string Synopsis(const EffectParameter& parameter) {
    const std::string name = Concat({parameter.name, "="});
    switch (parameter.kind) {
    case ParameterKind::Choice: {
        std::string names;
        for (const ParameterChoice& choice : parameter.choices) {
            names += names.empty() ? "" : "|";
            names += choice.name;
        }
        return name + names;
    }
    case ParameterKind::Colour:
        return name + "#RRGGBB";
    case ParameterKind::Bytes:
        return name + "FILE|N,N,...";
    case ParameterKind::Numbers:
        return name + "N,N,...";
    case ParameterKind::File:
        return name + "FILE";
    default:
        break;
    }
    return HasNoUpperEnd(parameter) ? name + "N"
                                    : Concat({name, std::to_string(parameter.smallest), "..",
                                              std::to_string(parameter.largest)});
}

std::string RangeText(const EffectParameter& parameter) {
    return HasNoUpperEnd(parameter) ? Concat({"; ", DescribeRange(parameter)}) : "";
}

std::string DefaultText(const EffectDescription& effect, const EffectParameter& parameter) {
    if (IsValue(parameter)) {
        return Concat(
            {"; default ", FormatValue(parameter, ParameterValue(parameter, Defaults(effect)))});
    }
    if (parameter.kind != ParameterKind::Numbers) {
        return "";
    }
    std::string numbers;
    for (std::size_t i = 0; i < parameter.count; ++i) {
        numbers += i > 0 ? "," : "";
        numbers += std::to_string(ParameterValue(parameter, Defaults(effect), i));
    }
    return Concat({"; default ", numbers});
}

} // namespace

void PrintEffectList() {
    for (const EffectDescription& effect : EffectTable()) {
        std::string line = effect.name;
        if (!effect.parameters.empty()) {
            line.resize(std::max(line.size(), std::size_t{21}), ' ');
        }
        for (const EffectParameter& parameter : effect.parameters) {
            line += Concat({" ", Summary(effect, parameter)});
        }
        std::printf("%2d  %s\n", effect.id, line.c_str());
    }
}

void PrintEffectHelp(const EffectDescription& effect) {
    std::printf("usage: zqfx run %s IN OUT%s\n\n", effect.name,
                effect.parameters.empty() ? "" : " [name=value ...]");
    std::printf("%s (effect %d) %s.\n", effect.title, effect.id, effect.help);
    std::printf("It takes %s.\n", DescribeClasses(effect.takes).c_str());
    if (!effect.parameters.empty()) {
        std::puts("");
    }
    for (const EffectParameter& parameter : effect.parameters) {
        std::printf("  %s\n      %s%s%s\n", Synopsis(parameter).c_str(), parameter.help,
                    RangeText(parameter).c_str(), DefaultText(effect, parameter).c_str());
    }
}

#include "tools/record_builder.h"

#include "editors/curve_file.h"
#include "editors/filter_file.h"
#include "tools/words.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

struct Assignment {
    const EffectParameter* parameter;
    std::string value;
};

std::string UnknownParameter(const EffectDescription& effect, const std::string& name) {
    if (effect.parameters.empty()) {
        return Concat({effect.name, " takes no parameters"});
    }
    std::vector<std::string> names;
    for (const EffectParameter& parameter : effect.parameters) {
        names.push_back(parameter.name);
    }
    return Concat(
        {effect.name, " has no parameter '", name, "'; it has ", JoinWords(names, "and")});
}

bool FindAssignments(const EffectDescription& effect, const std::vector<std::string>& texts,
                     std::vector<Assignment>& assignments, std::string& error) {
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        const std::string name = text.substr(0, equals);
        const auto parameter =
            std::find_if(effect.parameters.begin(), effect.parameters.end(),
                         [&](const EffectParameter& known) { return SameWord(name, known.name); });
        if (parameter == effect.parameters.end()) {
            error = UnknownParameter(effect, name);
            return false;
        }
        const bool twice =
            std::any_of(assignments.begin(), assignments.end(), [&](const Assignment& earlier) {
                return earlier.parameter == &*parameter;
            });
        if (twice) {
            error = Concat({parameter->name, " is given twice"});
            return false;
        }
        assignments.push_back({&*parameter, text.substr(equals + 1)});
    }
    return true;
}

// A list of numbers, as opposed to the name of a file.
bool LooksLikeList(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789, ") == text.npos;
}

bool IsFile(const Assignment& assignment) {
    return assignment.parameter->kind == ParameterKind::File ||
           (assignment.parameter->kind == ParameterKind::Bytes && !LooksLikeList(assignment.value));
}

// Curves fit both records that have one; only Magic Mirror's has a mapping.
bool TakeCurveFile(const EffectDescription& effect, const Assignment& assignment, Record& record) {
    MagicMirrorParams params = {};
    u8* bytes = record.data() + assignment.parameter->offset;
    std::memcpy(params.curve, bytes, sizeof params.curve);
    if (!ReadCurveFile(assignment.value.c_str(), params)) {
        return false;
    }
    std::memcpy(bytes, params.curve, sizeof params.curve);
    for (const EffectParameter& parameter : effect.parameters) {
        if (SameWord(parameter.name, "mapping")) {
            std::memcpy(record.data() + parameter.offset, &params.mapping, sizeof params.mapping);
        }
    }
    return true;
}

bool TakeFilterFile(const Assignment& assignment, Record& record) {
    const auto file = ReadFilterFile(assignment.value.c_str());
    if (!file) {
        return false;
    }
    UserFilterParams params;
    std::memcpy(&params, record.data(), sizeof params);
    std::ranges::transform(file->cells, params.cells, params.cells,
                           [](auto cell, i32 before) { return cell.value_or(before); });
    params.scale = file->scale.value_or(params.scale);
    params.bias = file->bias.value_or(params.bias);
    params.symmetry = file->symmetry.value_or(params.symmetry);
    std::memcpy(record.data(), &params, sizeof params);
    return true;
}

bool TakeFile(const EffectDescription& effect, const Assignment& assignment, Record& record,
              std::string& error) {
    const bool filter = assignment.parameter->kind == ParameterKind::File;
    const bool taken =
        filter ? TakeFilterFile(assignment, record) : TakeCurveFile(effect, assignment, record);
    if (!taken) {
        error = assignment.value + ": this is not a readable " +
                (filter ? "filter file (.udf)" : "curve file (.mmc) or a list of 256 numbers");
    }
    return taken;
}

std::optional<i64> ParseChoice(const EffectParameter& parameter, std::string_view text) {
    for (const ParameterChoice& choice : parameter.choices) {
        if (SameWord(text, choice.name)) {
            return choice.value;
        }
    }
    return ParseNumber(text);
}

// #rrggbb or the number of the word, whose lowest byte is red.
std::optional<i64> ParseColour(std::string_view text) {
    if (!text.starts_with('#')) {
        return ParseNumber(text);
    }
    const auto rgb = text.size() == 7 ? ParseNumber(Concat({"0x", text.substr(1)})) : std::nullopt;
    if (!rgb) {
        return std::nullopt;
    }
    return (*rgb >> 16 & 0xFF) | (*rgb & 0xFF00) | (*rgb & 0xFF) << 16;
}

std::optional<i64> ParseValue(const EffectParameter& parameter, std::string_view text) {
    switch (parameter.kind) {
    case ParameterKind::Choice:
        return ParseChoice(parameter, text);
    case ParameterKind::Colour:
        return ParseColour(text);
    default:
        return ParseNumber(text);
    }
}

void StoreValue(const EffectParameter& parameter, std::size_t index, i64 value, Record& record) {
    if (parameter.kind == ParameterKind::Bytes) {
        record[parameter.offset + index] = static_cast<u8>(value);
        return;
    }
    const auto word = static_cast<u32>(value);
    std::memcpy(record.data() + parameter.offset + index * sizeof word, &word, sizeof word);
}

bool TakeValues(const Assignment& assignment, Record& record, std::string& error) {
    const EffectParameter& parameter = *assignment.parameter;
    const bool isList = parameter.count > 1;
    const auto texts =
        isList ? SplitList(assignment.value, ',') : std::vector<std::string_view>{assignment.value};
    if (texts.size() != parameter.count) {
        error = Concat({parameter.name, ": there are ", std::to_string(texts.size()),
                        " numbers, not ", std::to_string(parameter.count)});
        return false;
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto value = ParseValue(parameter, texts[i]);
        if (!value || !Accepts(parameter, *value)) {
            error =
                Concat({parameter.name, "=", texts[i], ": it must be ", DescribeRange(parameter)});
            return false;
        }
        StoreValue(parameter, i, *value, record);
    }
    return true;
}

Record DefaultRecord(const EffectDescription& effect) {
    const auto* bytes = static_cast<const u8*>(effect.defaults);
    return bytes == nullptr ? Record() : Record(bytes, bytes + effect.recordBytes);
}

struct ClassName {
    ImageClass imageClass;
    const char* name;
};
constexpr ClassName kClassNames[] = {
    {ImageClass::Colour, "24-bit"},
    {ImageClass::Grey, "grey"},
    {ImageClass::Palette8, "8-bit palette"},
    {ImageClass::Palette4, "4-bit"},
    {ImageClass::Mono, "1-bit"},
};

} // namespace

bool BuildRecord(const EffectDescription& effect, const std::vector<std::string>& assignments,
                 Record& record, std::string& error) {
    std::vector<Assignment> found;
    if (!FindAssignments(effect, assignments, found, error)) {
        return false;
    }
    std::stable_partition(found.begin(), found.end(), IsFile);
    record = DefaultRecord(effect);
    return std::all_of(found.begin(), found.end(), [&](const Assignment& assignment) {
        return IsFile(assignment) ? TakeFile(effect, assignment, record, error)
                                  : TakeValues(assignment, record, error);
    });
}

bool ParseRecord(const EffectDescription& effect, std::string_view digits, Record& record,
                 std::string& error) {
    std::string plain;
    std::copy_if(digits.begin(), digits.end(), std::back_inserter(plain),
                 [](char digit) { return digit != ' '; });
    if (plain.find_first_not_of("0123456789abcdefABCDEF") != plain.npos || plain.size() % 2 != 0) {
        error = "--record takes pairs of hexadecimal digits";
        return false;
    }
    if (plain.size() / 2 != effect.recordBytes) {
        error = Concat({"the record of ", effect.name, " has ", std::to_string(effect.recordBytes),
                        " bytes, not ", std::to_string(plain.size() / 2)});
        return false;
    }
    record.clear();
    for (std::size_t i = 0; i < plain.size(); i += 2) {
        record.push_back(
            static_cast<u8>(ParseNumber(Concat({"0x", plain.substr(i, 2)})).value_or(0)));
    }
    return true;
}

i64 ParameterValue(const EffectParameter& parameter, const u8* record, std::size_t index) {
    const u8* field = record + parameter.offset;
    if (parameter.kind == ParameterKind::Bytes) {
        return field[index];
    }
    u32 word;
    std::memcpy(&word, field + index * sizeof word, sizeof word);
    const bool isUnsigned =
        parameter.kind == ParameterKind::Unsigned || parameter.kind == ParameterKind::Colour;
    return isUnsigned ? i64{word} : i64{static_cast<i32>(word)};
}

bool Accepts(const EffectParameter& parameter, i64 value) {
    if (parameter.kind == ParameterKind::Choice) {
        return std::any_of(parameter.choices.begin(), parameter.choices.end(),
                           [&](const ParameterChoice& choice) { return choice.value == value; });
    }
    return value >= parameter.smallest && value <= parameter.largest &&
           !(parameter.refusesZero && value == 0);
}

std::string DescribeRange(const EffectParameter& parameter) {
    switch (parameter.kind) {
    case ParameterKind::Choice: {
        std::vector<std::string> names;
        for (const ParameterChoice& choice : parameter.choices) {
            names.push_back(choice.name);
        }
        return JoinWords(names, "or");
    }
    case ParameterKind::Colour:
        return "a colour such as #ff8000";
    default:
        break;
    }
    if (parameter.largest == INT32_MAX) {
        return parameter.smallest > INT32_MIN
                   ? Concat({"a whole number, ", std::to_string(parameter.smallest), " or more"})
               : parameter.refusesZero ? "a whole number of 32 bits other than 0"
                                       : "a whole number of 32 bits";
    }
    return Concat({"a whole number from ", std::to_string(parameter.smallest), " to ",
                   std::to_string(parameter.largest)});
}

std::string FormatValue(const EffectParameter& parameter, i64 value) {
    for (const ParameterChoice& choice : parameter.choices) {
        if (choice.value == value) {
            return choice.name;
        }
    }
    if (parameter.kind == ParameterKind::Colour) {
        char text[16];
        std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(value & 0xFF),
                      static_cast<unsigned>(value >> 8 & 0xFF),
                      static_cast<unsigned>(value >> 16 & 0xFF));
        return text;
    }
    return std::to_string(value);
}

std::string DescribeClasses(ImageClasses classes) {
    std::vector<std::string> names;
    for (const ClassName& row : kClassNames) {
        if ((classes & ClassBit(row.imageClass)) != 0) {
            names.push_back(row.name);
        }
    }
    return JoinWords(names, "and") + " pictures";
}

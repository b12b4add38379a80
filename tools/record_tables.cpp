// zq_record_tables prints the records of all effects as tables of Markdown, for the host's guide.
#include "dialogs/catalogue.h"
#include "tools/record_builder.h"
#include "tools/words.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cxxabi.h>
#include <iterator>

namespace {

bool SameRecord(const EffectDescription& one, const EffectDescription& other) {
    return one.parameters.data() == other.parameters.data() && one.defaults == other.defaults;
}

const u8* Defaults(const EffectDescription& effect) {
    return static_cast<const u8*>(effect.defaults);
}

std::vector<EffectParameter> FieldsOf(const EffectDescription& effect) {
    std::vector<EffectParameter> fields;
    for (const auto& some : {effect.parameters, effect.otherFields}) {
        std::ranges::copy_if(some, std::back_inserter(fields), [](const EffectParameter& field) {
            return field.kind != ParameterKind::File;
        });
    }
    std::ranges::sort(fields, {}, &EffectParameter::offset);
    return fields;
}

std::string NameOf(const std::type_info& type) {
    char* name = abi::__cxa_demangle(type.name(), nullptr, nullptr, nullptr);
    std::string copy = name == nullptr ? type.name() : name;
    std::free(name);
    return copy;
}

std::string Declaration(const EffectParameter& field) {
    const bool isUnsigned =
        field.kind == ParameterKind::Unsigned || field.kind == ParameterKind::Colour;
    const char* type = field.kind == ParameterKind::Bytes ? "uint8_t "
                       : isUnsigned                       ? "uint32_t "
                                                          : "int32_t ";
    return field.count == 1 ? Concat({type, field.name})
                            : Concat({type, field.name, "[", std::to_string(field.count), "]"});
}

std::string RangeOf(const EffectParameter& field) {
    if (field.kind == ParameterKind::Colour) {
        return "0x00BBGGRR";
    }
    std::vector<std::string> choices;
    for (const ParameterChoice& choice : field.choices) {
        choices.push_back(Concat({std::to_string(choice.value), " ", choice.name}));
    }
    if (!choices.empty()) {
        return JoinWords(choices, "or");
    }
    if (field.largest == INT32_MAX) {
        return field.smallest > INT32_MIN ? std::to_string(field.smallest) + " or more"
               : field.refusesZero        ? "any but 0"
                                          : "any";
    }
    return Concat({std::to_string(field.smallest), " to ", std::to_string(field.largest)});
}

std::string DefaultOf(const EffectDescription& effect, const EffectParameter& field) {
    std::string values;
    bool isLine = true;
    for (std::size_t i = 0; i < field.count; ++i) {
        const i64 value = ParameterValue(field, Defaults(effect), i);
        isLine = isLine && value == static_cast<i64>(i);
        values += (i > 0 ? ", " : "") + std::to_string(value);
    }
    if (field.kind != ParameterKind::Bytes) {
        return values;
    }
    return isLine ? "entry i is i" : "see the meaning";
}

const char* WrittenByDialog(EffectId id) {
    const EffectRow* dialog = FindEffectRow(id);
    if (dialog == nullptr) {
        return "no dialog";
    }
    switch (dialog->written) {
    case RecordWritten::Live:
        return "dialog works in the buffer";
    case RecordWritten::AsResult:
        return "dialog writes the first word at OK";
    case RecordWritten::AtOpeningAndOk:
        return "dialog writes at opening and at OK";
    default:
        return "dialog writes at OK";
    }
}

void PrintEffect(const EffectDescription& effect) {
    std::printf("- **%d %s** %s (%s; %s)\n", effect.id, effect.title, effect.help,
                DescribeClasses(effect.takes).c_str(), WrittenByDialog(effect.id));
}

void PrintFields(const EffectDescription& effect) {
    std::puts("\n| offset | field | range | default | meaning |\n|---|---|---|---|---|");
    for (const EffectParameter& field : FieldsOf(effect)) {
        std::printf("| %zu | `%s` | %s | %s | %s |\n", field.offset, Declaration(field).c_str(),
                    RangeOf(field).c_str(), DefaultOf(effect, field).c_str(), field.help);
    }
}

// All effects with one record, told at the first of them.
void PrintRecord(const EffectDescription& first) {
    if (first.recordBytes == 0) {
        std::puts("\n### No record");
    } else {
        std::printf("\n### %s, %zu bytes\n", NameOf(*first.recordType).c_str(), first.recordBytes);
    }
    std::puts("");
    for (const EffectDescription& effect : EffectTable()) {
        if (SameRecord(first, effect)) {
            PrintEffect(effect);
        }
    }
    if (first.recordBytes != 0) {
        PrintFields(first);
    }
}

} // namespace

int main() {
    for (const EffectDescription& effect : EffectTable()) {
        const auto first = std::ranges::find_if(EffectTable(), [&](const EffectDescription& other) {
            return SameRecord(effect, other);
        });
        if (&*first == &effect) {
            PrintRecord(effect);
        }
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}

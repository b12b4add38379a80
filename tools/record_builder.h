// An effect's record from what stands on a command line.
#pragma once

#include "tools/effect_table.h"

#include <string>
#include <vector>

// The bytes of an effect's record; none for an effect without one.
using Record = std::vector<u8>;

// The defaults with each `name=value` put in; files come first, so that a value beside one changes
// what the file gave. False with one line in `error`.
bool BuildRecord(const EffectDescription& effect, const std::vector<std::string>& assignments,
                 Record& record, std::string& error);

// The record's bytes from hexadecimal digits, any values. False with one line in `error`.
bool ParseRecord(const EffectDescription& effect, std::string_view digits, Record& record,
                 std::string& error);

// The value of a parameter's field; of a list, that of element `index`.
i64 ParameterValue(const EffectParameter& parameter, const u8* record, std::size_t index = 0);

// Whether the parameter may have this value.
bool Accepts(const EffectParameter& parameter, i64 value);

// What a parameter accepts, such as "2 to 32" or "row or column".
std::string DescribeRange(const EffectParameter& parameter);

// A value as it is typed: the name of a choice, #rrggbb, or a number.
std::string FormatValue(const EffectParameter& parameter, i64 value);

// Such as "24-bit and grey pictures".
std::string DescribeClasses(ImageClasses classes);

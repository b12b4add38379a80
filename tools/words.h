// Words that people type: compared with some patience, and read as numbers with none.
#pragma once

#include "platform/types.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

std::string Concat(std::initializer_list<std::string_view> parts);

// Lower case, without hyphens, underscores and blanks.
std::string PlainWord(std::string_view word);

bool SameWord(std::string_view a, std::string_view b);

// How many letters have to be put in, taken out or replaced to make one of the other.
std::size_t WordDistance(std::string_view a, std::string_view b);

// A whole number, decimal with a sign or hexadecimal behind 0x; nothing for anything else. One
// beyond 64 bits becomes the end of their range.
std::optional<i64> ParseNumber(std::string_view text);

std::vector<std::string_view> SplitList(std::string_view text, char separator);

// "a", "a or b", "a, b or c".
std::string JoinWords(const std::vector<std::string>& words, const char* last);

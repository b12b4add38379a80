#include "tools/words.h"

#include <algorithm>
#include <charconv>
#include <numeric>

std::string Concat(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) {
        text += part;
    }
    return text;
}

std::string PlainWord(std::string_view word) {
    std::string plain;
    for (const char letter : word) {
        if (letter == '-' || letter == '_' || letter == ' ') {
            continue;
        }
        const bool upper = letter >= 'A' && letter <= 'Z';
        plain.push_back(upper ? static_cast<char>(letter - 'A' + 'a') : letter);
    }
    return plain;
}

bool SameWord(std::string_view a, std::string_view b) {
    return PlainWord(a) == PlainWord(b);
}

std::size_t WordDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::optional<i64> ParseNumber(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const std::size_t prefix = hexadecimal ? 2 : text.starts_with('+') ? 1 : 0;
    text.remove_prefix(prefix);
    const bool negative = text.starts_with('-');
    if (negative && prefix > 0) {
        return std::nullopt;
    }
    i64 value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, value, hexadecimal ? 16 : 10);
    if (stop != end || failure == std::errc::invalid_argument) {
        return std::nullopt;
    }
    if (failure == std::errc::result_out_of_range) {
        return negative ? INT64_MIN : INT64_MAX;
    }
    return value;
}

std::vector<std::string_view> SplitList(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    std::size_t begin = 0;
    for (std::size_t end = text.find(separator); end != text.npos;
         end = text.find(separator, begin)) {
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    parts.push_back(text.substr(begin));
    return parts;
}

std::string JoinWords(const std::vector<std::string>& words, const char* last) {
    std::string joined;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) {
            joined += i + 1 == words.size() ? Concat({" ", last, " "}) : ", ";
        }
        joined += words[i];
    }
    return joined;
}

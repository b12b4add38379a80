// A dialog's controls by their ids.
#include "platform/qt/window.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <optional>
#include <string_view>

namespace {

// The number that a text begins with, behind spaces; nothing without a digit or beyond `most`.
std::optional<unsigned long long> LeadingNumber(std::string_view digits, unsigned long long most) {
    unsigned long long number = 0;
    std::size_t length = 0;
    for (; length < digits.size() && digits[length] >= '0' && digits[length] <= '9'; ++length) {
        number = number * 10 + static_cast<unsigned>(digits[length] - '0');
        if (number > most) {
            return std::nullopt;
        }
    }
    return length == 0 ? std::nullopt : std::optional(number);
}

std::optional<UINT> ParseInt(std::string_view text, bool isSigned) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const bool negative = isSigned && text.starts_with('-');
    constexpr unsigned long long kMostSigned = std::numeric_limits<int>::max();
    const auto number =
        LeadingNumber(text.substr(negative ? 1 : 0), isSigned ? kMostSigned + (negative ? 1 : 0)
                                                              : std::numeric_limits<UINT>::max());
    if (!number) {
        return std::nullopt;
    }
    return static_cast<UINT>(negative ? 0 - *number : *number);
}

} // namespace

extern "C" {

HWND GetDlgItem(HWND dialog, int id) {
    const Window* window = FindWindowOf(dialog);
    if (window == nullptr) {
        return nullptr;
    }
    for (HWND child : window->children) {
        if (FindWindowOf(child)->id == id) {
            return child;
        }
    }
    return nullptr;
}

LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageA(GetDlgItem(dialog, id), message, wParam, lParam);
}

BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text) {
    return SetWindowTextA(GetDlgItem(dialog, id), text);
}

UINT GetDlgItemTextA(HWND dialog, int id, LPSTR buffer, int size) {
    return static_cast<UINT>(GetWindowTextA(GetDlgItem(dialog, id), buffer, size));
}

UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL isSigned) {
    char text[64] = "";
    GetDlgItemTextA(dialog, id, text, sizeof text);
    const auto number =
        GetDlgItem(dialog, id) == nullptr ? std::nullopt : ParseInt(text, isSigned != 0);
    if (translated != nullptr) {
        *translated = number.has_value();
    }
    return number.value_or(0);
}

BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned) {
    char text[16];
    if (isSigned) {
        std::snprintf(text, sizeof text, "%d", static_cast<int>(value));
    } else {
        std::snprintf(text, sizeof text, "%u", value);
    }
    return SetDlgItemTextA(dialog, id, text);
}

BOOL CheckRadioButton(HWND dialog, int first, int last, int check) {
    const Window* window = FindWindowOf(dialog);
    if (window == nullptr) {
        return 0;
    }
    const auto children = window->children;
    for (HWND child : children) {
        const int id = GetDlgCtrlID(child);
        if (IsWindow(child) && id >= first && id <= last) {
            SendMessageA(child, BM_SETCHECK, id == check ? BST_CHECKED : BST_UNCHECKED, 0);
        }
    }
    return 1;
}

UINT IsDlgButtonChecked(HWND dialog, int id) {
    return static_cast<UINT>(SendDlgItemMessageA(dialog, id, BM_GETCHECK, 0, 0));
}

} // extern "C"

// A dialog's controls by their ids.
#include "platform/qt/window.h"

#include <cstdio>

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

// For tests only: answers to file dialogs, which are not shown then.
#pragma once

#include "platform/win32.h"

#include <string>

// What a file dialog was asked to be.
struct FileDialogRequest {
    bool saves;
    HWND owner;
    std::string title;
    std::string filter;  // the first entry's name
    std::string pattern; // and pattern
    std::string folder;
    std::string extension;
    DWORD flags;
};

// The next file dialog gives this path, or is cancelled when it is empty.
ZQ_API void AnswerNextFileDialog(const std::string& path);

// The request that was answered last.
ZQ_API FileDialogRequest LastFileDialogRequest();

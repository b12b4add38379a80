// File dialogs that are answered instead of shown.
#include "platform/qt/file_dialog_testing.h"
#include "tests/support/windows/import_hooks.h"

#include <cstring>

namespace {

std::string answer;
FileDialogRequest request;

std::string TextOf(LPCSTR text) {
    return text == nullptr ? "" : text;
}

BOOL Answer(OPENFILENAMEA* options, bool saves) {
    const std::string filter = TextOf(options->lpstrFilter);
    request = {saves,
               options->hwndOwner,
               TextOf(options->lpstrTitle),
               filter,
               filter.empty() ? "" : options->lpstrFilter + filter.size() + 1,
               TextOf(options->lpstrInitialDir),
               TextOf(options->lpstrDefExt),
               options->Flags};
    std::string path = answer;
    const bool named = path.find('.', path.find_last_of("/\\") + 1) != std::string::npos;
    if (!path.empty() && !named && !request.extension.empty()) {
        path.append(request.extension.starts_with('.') ? "" : ".").append(request.extension);
    }
    if (path.empty() || path.size() >= options->nMaxFile) {
        return FALSE;
    }
    std::strcpy(options->lpstrFile, path.c_str());
    return TRUE;
}

BOOL WINAPI HookedGetOpenFileNameA(OPENFILENAMEA* options);
BOOL WINAPI HookedGetSaveFileNameA(OPENFILENAMEA* options);

HOOK_IMPORT("comdlg32", GetOpenFileNameA, 4)
HOOK_IMPORT("comdlg32", GetSaveFileNameA, 4)

BOOL WINAPI HookedGetOpenFileNameA(OPENFILENAMEA* options) {
    return Answer(options, false);
}

BOOL WINAPI HookedGetSaveFileNameA(OPENFILENAMEA* options) {
    return Answer(options, true);
}

} // namespace

void AnswerNextFileDialog(const std::string& path) {
    answer = path;
}

FileDialogRequest LastFileDialogRequest() {
    return request;
}

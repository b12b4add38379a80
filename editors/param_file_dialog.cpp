#include "editors/param_file_dialog.h"

#include "dialogs/module_instance.h"

namespace {

char fileName[128];

template <class Ask>
const char* FileName(HWND owner, const ParamFileKind& kind, const char* title, DWORD flags,
                     Ask ask) {
    char folder[260] = "";
    if (kind.startsAtLibrary) {
        GetModuleFileNameA(moduleInstance, folder, sizeof(folder));
    }
    fileName[0] = '\0';
    OPENFILENAMEA options{};
    options.lStructSize = sizeof(options);
    options.hwndOwner = owner;
    options.lpstrFilter = kind.filter;
    options.nFilterIndex = 1;
    options.lpstrFile = fileName;
    options.nMaxFile = sizeof(fileName);
    options.lpstrInitialDir = kind.startsAtLibrary ? folder : nullptr;
    options.lpstrTitle = title;
    options.Flags = flags;
    options.lpstrDefExt = kind.extension;
    return ask(&options) != 0 ? fileName : nullptr;
}

constexpr DWORD kFlags = OFN_HIDEREADONLY | OFN_NOCHANGEDIR;

} // namespace

const char* AskForParamFile(HWND owner, const ParamFileKind& kind, const char* title) {
    return FileName(owner, kind, title, kFlags, GetOpenFileNameA);
}

const char* AskForNewParamFile(HWND owner, const ParamFileKind& kind, const char* title) {
    return FileName(owner, kind, title, kFlags | OFN_OVERWRITEPROMPT, GetSaveFileNameA);
}

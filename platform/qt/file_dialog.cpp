// The dialogs that ask for the name of a file.
#include "platform/qt/application.h"
#include "platform/qt/file_dialog_testing.h"
#include "platform/qt/modal_loop.h"
#include "platform/qt/window.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

#include <cstring>
#include <optional>
#include <utility>

namespace {

std::optional<std::string> pendingAnswer;
FileDialogRequest lastRequest;

std::string TextOrNothing(const char* text) {
    return text == nullptr ? "" : text;
}

struct Filter {
    std::string name;
    std::string pattern;
};

// Pairs of strings, ended by an empty one.
std::vector<Filter> FiltersOf(const char* text) {
    std::vector<Filter> filters;
    while (text != nullptr && *text != '\0') {
        Filter& filter = filters.emplace_back();
        filter.name = text;
        text += filter.name.size() + 1;
        filter.pattern = text;
        text += filter.pattern.size() + 1;
    }
    return filters;
}

// Qt takes the pattern out of the brackets at the end of the name.
QString ToNameFilter(const Filter& filter) {
    const QString name = ToQString(filter.name.substr(0, filter.name.rfind(" (")));
    const QString pattern = ToQString(filter.pattern).replace(';', ' ');
    return name + " (" + pattern + ")";
}

FileDialogRequest Describe(const OPENFILENAMEA& options, bool saves) {
    const auto filters = FiltersOf(options.lpstrFilter);
    const Filter first = filters.empty() ? Filter{} : filters.front();
    return {saves,
            options.hwndOwner,
            TextOrNothing(options.lpstrTitle),
            first.name,
            first.pattern,
            TextOrNothing(options.lpstrInitialDir),
            TextOrNothing(options.lpstrDefExt),
            options.Flags};
}

void Prepare(QFileDialog& dialog, const OPENFILENAMEA& options, bool saves) {
    // Shown by Qt itself, for only such a dialog blocks a window that Qt does not own.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, (options.Flags & OFN_OVERWRITEPROMPT) == 0);
    if (options.lpstrTitle != nullptr) {
        dialog.setWindowTitle(ToQString(options.lpstrTitle));
    }
    QStringList names;
    for (const Filter& filter : FiltersOf(options.lpstrFilter)) {
        names << ToNameFilter(filter);
    }
    if (!names.isEmpty()) {
        dialog.setNameFilters(names);
    }
    const QString folder = QFile::decodeName(TextOrNothing(options.lpstrInitialDir).c_str());
    if (QFileInfo(folder).isDir()) {
        dialog.setDirectory(folder);
    }
    dialog.setDefaultSuffix(ToQString(TextOrNothing(options.lpstrDefExt)));
    if (*options.lpstrFile != '\0') {
        dialog.selectFile(QFile::decodeName(options.lpstrFile));
    }
}

// The path in the encoding of the file system; nothing when none was chosen.
std::optional<std::string> AskUser(const OPENFILENAMEA& options, bool saves) {
    ModalLoop owner(options.hwndOwner);
    QFileDialog dialog;
    Prepare(dialog, options, saves);
    owner.MakeModal(dialog);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    owner.Leave();
    if (QWidget* widget = WidgetOf(options.hwndOwner)) {
        widget->window()->activateWindow();
    }
    const QStringList files = dialog.selectedFiles();
    if (!accepted || files.isEmpty()) {
        return std::nullopt;
    }
    return QFile::encodeName(files.front()).toStdString();
}

std::optional<std::string> TakeAnswer(const OPENFILENAMEA& options, bool saves) {
    lastRequest = Describe(options, saves);
    const std::string path = *std::exchange(pendingAnswer, std::nullopt);
    return path.empty() ? std::nullopt : std::optional(path);
}

// Where the file's own name begins in a path.
std::size_t NameOffset(const std::string& path) {
    return path.rfind('/') + 1;
}

std::size_t ExtensionOffset(const std::string& path) {
    const std::size_t dot = path.find_last_of('.');
    return dot == std::string::npos || dot < NameOffset(path) ? 0 : dot + 1;
}

std::string WithExtension(std::string path, const char* extension) {
    if (extension == nullptr || ExtensionOffset(path) != 0) {
        return path;
    }
    return path + "." + (extension + (*extension == '.' ? 1 : 0));
}

BOOL HandOver(const std::string& path, OPENFILENAMEA& options) {
    const std::size_t needed = path.size() + 1;
    if (needed > options.nMaxFile) {
        const auto length = static_cast<WORD>(std::min<std::size_t>(needed, 0xFFFF));
        if (options.nMaxFile >= sizeof length) {
            std::memcpy(options.lpstrFile, &length, sizeof length);
        }
        return FALSE;
    }
    std::memcpy(options.lpstrFile, path.c_str(), needed);
    options.nFileOffset = static_cast<WORD>(NameOffset(path));
    options.nFileExtension = static_cast<WORD>(ExtensionOffset(path));
    return TRUE;
}

BOOL AskForFile(OPENFILENAMEA* options, bool saves) {
    if (options == nullptr || options->lStructSize != sizeof(OPENFILENAMEA) ||
        options->lpstrFile == nullptr || options->nMaxFile == 0 || !EnsureApplication()) {
        return FALSE;
    }
    const auto path = pendingAnswer ? TakeAnswer(*options, saves) : AskUser(*options, saves);
    return path ? HandOver(WithExtension(*path, options->lpstrDefExt), *options) : FALSE;
}

} // namespace

void AnswerNextFileDialog(const std::string& path) {
    pendingAnswer = path;
}

FileDialogRequest LastFileDialogRequest() {
    return lastRequest;
}

extern "C" {

BOOL GetOpenFileNameA(OPENFILENAMEA* options) {
    return AskForFile(options, false);
}

BOOL GetSaveFileNameA(OPENFILENAMEA* options) {
    return AskForFile(options, true);
}

} // extern "C"

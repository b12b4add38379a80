#include "host/shots.h"

#include "host/main_window.h"
#include "platform/qt/grab.h"
#include "platform/win32.h"

#include <QDir>
#include <QElapsedTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <strings.h>

namespace {

constexpr int kDialogClassText = 32;
constexpr int kFirstControl = 4201;
constexpr int kLastControl = 4328;
constexpr int kLookEveryMs = 20;
constexpr int kAfterPaneMs = 1500; // the After pane works once a second
constexpr int kPatienceMs = 30000;
constexpr int kPageSteps = 3;

HWND FindControl(HWND dialog, const char* className, DWORD style, DWORD styleMask) {
    for (int id = kFirstControl; id <= kLastControl; ++id) {
        HWND control = GetDlgItem(dialog, id);
        char name[kDialogClassText] = {};
        if (control != nullptr && GetClassNameA(control, name, sizeof name) != 0 &&
            strcasecmp(name, className) == 0 &&
            (static_cast<DWORD>(GetWindowLongPtrA(control, GWL_STYLE)) & styleMask) == style) {
            return control;
        }
    }
    return nullptr;
}

// Turns the first scroll bar up, as clicks beside its thumb do.
void MoveAControl(HWND dialog) {
    HWND bar = FindControl(dialog, "ScrollBar", 0, 0);
    for (int i = 0; bar != nullptr && i < kPageSteps; ++i) {
        SendMessageA(dialog, WM_HSCROLL, MAKEWPARAM(SB_PAGEDOWN, 0), reinterpret_cast<LPARAM>(bar));
        SendMessageA(dialog, WM_HSCROLL, MAKEWPARAM(SB_ENDSCROLL, 0),
                     reinterpret_cast<LPARAM>(bar));
    }
}

QString FileNameFor(EffectId id, const char* title) {
    QString name = QStringLiteral("%1-").arg(id, 2, 10, QLatin1Char('0'));
    for (const QChar letter : QString::fromLatin1(title).toLower()) {
        if (letter.isLetterOrNumber()) {
            name += letter;
        } else if (!name.endsWith('-') && letter != '\'') {
            name += '-';
        }
    }
    return name + ".png";
}

// Works the dialog once it is there, and cancels it in the end. Its timer is one of the dialog's
// world: it rests while a kernel runs, where a timer of Qt's would see half-made dialogs.
class Photographer {
public:
    explicit Photographer(const QString& file)
        : file_(file), timer_(SetTimer(nullptr, 0, kLookEveryMs, OnTimer)) {
        current = this;
        clock_.start();
    }
    Photographer(const Photographer&) = delete;
    Photographer& operator=(const Photographer&) = delete;
    ~Photographer() {
        KillTimer(nullptr, timer_);
        current = nullptr;
    }

    bool Written() const { return written_; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (current != nullptr) {
            current->Look();
        }
    }

    void Look() {
        if (dialog_ == nullptr) {
            dialog_ = FindWindowA("#32770", nullptr);
            if (dialog_ != nullptr) {
                MoveAControl(dialog_);
                clock_.restart();
            }
        } else if (clock_.hasExpired(kAfterPaneMs)) {
            written_ = GrabWindow(dialog_).save(file_);
            SendMessageA(dialog_, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
        }
        if (clock_.hasExpired(kPatienceMs)) {
            std::fputs("zqhost: a dialog did not come up or did not end\n", stderr);
            std::_Exit(1);
        }
    }

    static Photographer* current;
    QString file_;
    UINT_PTR timer_;
    QElapsedTimer clock_;
    HWND dialog_ = nullptr;
    bool written_ = false;
};

Photographer* Photographer::current = nullptr;

// False with a word on the standard error when `file` was not written.
bool TakeShot(const QString& file, const std::function<void()>& openDialog) {
    Photographer photographer(file);
    openDialog();
    if (!photographer.Written()) {
        std::fprintf(stderr, "zqhost: %s: not written\n", qPrintable(file));
    }
    return photographer.Written();
}

} // namespace

bool MakeShots(MainWindow& window, const QString& folder, EffectId effect) {
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "zqhost: %s: the folder cannot be made\n", qPrintable(folder));
        return false;
    }
    const auto fileFor = [&](EffectId id, const char* title) {
        return QDir(folder).filePath(FileNameFor(id, title));
    };
    bool allWritten =
        effect != 0 || TakeShot(fileFor(0, "Effect Browser"), [&] { window.RunEffectBrowser(); });
    for (const EffectOffer& offer : EffectOffers()) {
        if (effect == 0 || effect == offer.id) {
            allWritten &=
                TakeShot(fileFor(offer.id, offer.name), [&] { window.RunEffectDialog(offer); });
        }
    }
    return allWritten;
}

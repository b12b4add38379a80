#include "host/shots.h"

#include "host/main_window.h"
#include "platform/qt/grab.h"
#include "platform/win32.h"
#include "resources/resource.h"

#include <QDir>
#include <QElapsedTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <strings.h>
#include <utility>

namespace {

constexpr int kDialogClassText = 32;
constexpr int kFirstControl = 4201;
constexpr int kLastControl = 4328;
constexpr int kLookEveryMs = 20;
constexpr int kAfterPaneMs = 1500; // the After pane works once a second
constexpr int kPatienceMs = 30000;
constexpr int kPageSteps = 3;
constexpr int kEmbeddedDialog = 0; // its id in the browser

// The effects that the browser is shown with, by the rows of its list.
struct BrowserShot {
    int row;
    const char* name;
};
constexpr BrowserShot kBrowserShots[] = {
    {0, "brightness-and-contrast"}, {12, "oil-painting"}, {21, "emboss"}};

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

// Turns the first scroll bar up, as clicks beside its thumb do; without one, applies a curve's
// preset or fills two cells of a filter.
void MoveAControl(HWND dialog) {
    constexpr int kUpperLeftCell = IDC_FIRST_CELL + 6;
    constexpr int kLowerRightCell = IDC_FIRST_CELL + 18;
    HWND bar = FindControl(dialog, "ScrollBar", 0, 0);
    for (int i = 0; bar != nullptr && i < kPageSteps; ++i) {
        SendMessageA(dialog, WM_HSCROLL, MAKEWPARAM(SB_PAGEDOWN, 0), reinterpret_cast<LPARAM>(bar));
        SendMessageA(dialog, WM_HSCROLL, MAKEWPARAM(SB_ENDSCROLL, 0),
                     reinterpret_cast<LPARAM>(bar));
    }
    if (bar == nullptr && FindControl(dialog, "Edit", 0, 0) != nullptr) {
        SetDlgItemTextA(dialog, kUpperLeftCell, "-1");
        SetDlgItemTextA(dialog, kLowerRightCell, "1");
    } else if (bar == nullptr) {
        SendDlgItemMessageA(dialog, IDC_OPERATE, BM_CLICK, 0, 0);
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

// Lets the browser show another effect. Comes back when the browser has ended.
void ChooseRow(HWND browser, int row) {
    const HWND list = GetDlgItem(browser, IDC_EFFECT_LIST);
    SendMessageA(list, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    SendMessageA(browser, WM_COMMAND, MAKEWPARAM(IDC_EFFECT_LIST, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(list));
}

// Works the dialog once it is there, and cancels it in the end. Its timer is one of the dialog's
// world: it rests while a kernel runs, where a timer of Qt's would see half-made dialogs.
class Photographer {
public:
    // `row` is the one to choose in the browser, -1 for a dialog by itself.
    Photographer(const QString& file, int row)
        : file_(file), row_(row), timer_(SetTimer(nullptr, 0, kLookEveryMs, OnTimer)) {
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
    enum class State { Opening, Choosing, Shown, Done };

    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
        if (current != nullptr) {
            current->Look();
        }
    }

    void Look() {
        switch (state_) {
        case State::Opening:
            dialog_ = FindWindowA("#32770", nullptr);
            if (dialog_ != nullptr && row_ >= 0) {
                state_ = State::Choosing;
                if (row_ > 0) {
                    ChooseRow(dialog_, row_);
                }
            } else if (dialog_ != nullptr) {
                Work(dialog_);
            }
            break;
        case State::Choosing:
            if (const HWND embedded = GetDlgItem(dialog_, kEmbeddedDialog)) {
                Work(embedded);
            }
            break;
        case State::Shown:
            if (clock_.hasExpired(kAfterPaneMs)) {
                state_ = State::Done;
                written_ = GrabWindow(dialog_).save(file_);
                SendMessageA(dialog_, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
            }
            break;
        case State::Done:
            break;
        }
        if (clock_.hasExpired(kPatienceMs)) {
            std::fputs("zqhost: a dialog did not come up or did not end\n", stderr);
            std::_Exit(1);
        }
    }

    void Work(HWND dialog) {
        state_ = State::Shown;
        MoveAControl(dialog);
        clock_.restart();
    }

    static Photographer* current;
    QString file_;
    int row_;
    UINT_PTR timer_;
    QElapsedTimer clock_;
    State state_ = State::Opening;
    HWND dialog_ = nullptr;
    bool written_ = false;
};

Photographer* Photographer::current = nullptr;

// False with a word on the standard error when `file` was not written.
bool TakeShot(const QString& file, const std::function<void()>& openDialog, int row = -1) {
    Photographer photographer(file, row);
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
    const QDir shots(folder);
    bool allWritten = true;
    EffectId last = 0;
    for (const EffectOffer& offer : EffectOffers()) {
        const bool again = std::exchange(last, offer.id) == offer.id;
        if (offer.hasDialog && !again && (effect == 0 || effect == offer.id)) {
            allWritten &= TakeShot(shots.filePath(FileNameFor(offer.id, offer.name)),
                                   [&] { window.RunOffer(offer); });
        }
    }
    for (const BrowserShot& shot : kBrowserShots) {
        if (effect == 0) {
            allWritten &= TakeShot(
                shots.filePath(QStringLiteral("browser-%1.png").arg(shot.name)),
                [&] { window.RunEffectBrowser(); }, shot.row);
        }
    }
    return allWritten;
}

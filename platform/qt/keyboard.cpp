#include "platform/qt/keyboard.h"

#include "platform/qt/control.h"
#include "platform/qt/key_state.h"
#include "platform/qt/navigation.h"

#include <QKeyEvent>

#include <algorithm>

namespace {

LRESULT DialogCode(HWND control) {
    return SendMessageA(control, WM_GETDLGCODE, 0, 0);
}

void Command(HWND dialog, int id, HWND control) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(control));
}

// Presses a button of the dialog, unless it is there and disabled.
void CommandIfEnabled(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    if (control == nullptr || IsWindowEnabled(control)) {
        Command(dialog, id, control);
    }
}

void PressDefault(HWND dialog, HWND focus) {
    if ((DialogCode(focus) & DLGC_DEFPUSHBUTTON) != 0) {
        Command(GetParent(focus), GetDlgCtrlID(focus), focus);
    } else {
        CommandIfEnabled(dialog, FindWindowOf(dialog)->defaultId);
    }
}

void MoveInGroup(HWND focus, bool backwards) {
    const HWND next = NextInGroup(focus, backwards);
    SetFocus(next);
    const Window* window = FindWindowOf(next);
    if (window != nullptr && window->control == &kAutoRadioButton &&
        SendMessageA(next, BM_GETCHECK, 0, 0) == BST_UNCHECKED) {
        SendMessageA(next, BM_CLICK, 0, 0);
    }
}

// The letter behind the last single '&' of a text, in upper case; 0 without one.
char MnemonicOf(const std::string& text) {
    char letter = 0;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '&') {
            letter = text[i + 1] == '&' ? letter : text[i + 1];
            ++i;
        }
    }
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

void Choose(HWND dialog, HWND control) {
    const LRESULT code = DialogCode(control);
    if ((code & DLGC_STATIC) != 0) {
        FocusControl(NextTabStop(dialog, control, false));
        return;
    }
    FocusControl(control);
    if ((code & DLGC_BUTTON) != 0) {
        SendMessageA(control, BM_CLICK, 0, 0);
    }
}

bool ChooseByLetter(HWND dialog, HWND focus, int key) {
    auto controls = ControlsOf(dialog);
    const auto at = std::ranges::find(controls, focus);
    if (at != controls.end()) {
        std::rotate(controls.begin(), std::next(at), controls.end());
    }
    for (HWND control : controls) {
        if (IsUsable(control) && MnemonicOf(FindWindowOf(control)->text) == key) {
            Choose(dialog, control);
            return true;
        }
    }
    return false;
}

bool IsLetterKey(const QKeyEvent& event) {
    const bool shown = event.key() > Qt::Key_Space && event.key() < Qt::Key_AsciiTilde;
    return shown && (event.modifiers() & (Qt::ControlModifier | Qt::MetaModifier)) == 0;
}

int ArrowStep(int key) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return -1;
    case Qt::Key_Right:
    case Qt::Key_Down:
        return 1;
    default:
        return 0;
    }
}

} // namespace

bool HandleDialogKey(HWND dialog, HWND focus, const QKeyEvent& event) {
    const LRESULT code = DialogCode(focus);
    const int key = event.key();
    switch (key) {
    case Qt::Key_Escape:
        if (!event.isAutoRepeat()) {
            CommandIfEnabled(dialog, IDCANCEL);
        }
        UseUpPress(VK_ESCAPE);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event.isAutoRepeat()) {
            PressDefault(dialog, focus);
        }
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: {
        const bool backwards =
            key == Qt::Key_Backtab || (event.modifiers() & Qt::ShiftModifier) != 0;
        FocusControl(NextTabStop(dialog, focus, backwards));
        return true;
    }
    default:
        break;
    }
    if (const int step = ArrowStep(key); step != 0) {
        if ((code & (DLGC_WANTARROWS | DLGC_WANTALLKEYS)) != 0) {
            return false;
        }
        if (focus != dialog) {
            MoveInGroup(focus, step < 0);
        }
        return true;
    }
    const bool alt = (event.modifiers() & Qt::AltModifier) != 0;
    const bool typed = (code & (DLGC_WANTCHARS | DLGC_WANTALLKEYS)) != 0;
    return IsLetterKey(event) && (alt || !typed) && ChooseByLetter(dialog, focus, key);
}

void UpdateDefaultButton(HWND focus) {
    const Window* dialog = FindWindowOf(KeyDialogOf(focus));
    if (dialog == nullptr) {
        return;
    }
    const int id = dialog->defaultId;
    const HWND home = dialog->handle;
    constexpr LRESULT kPushButtonCodes = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;
    const bool focusIsButton = (DialogCode(focus) & kPushButtonCodes) != 0;
    const HWND chosen = focusIsButton ? focus : GetDlgItem(home, id);
    for (HWND control : ControlsOf(home)) {
        if ((DialogCode(control) & kPushButtonCodes) != 0) {
            SendMessageA(control, BM_SETSTYLE, control == chosen ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON,
                         1);
        }
    }
}

#include "platform/qt/dialog.h"

#include "platform/base/resource_file.h"
#include "platform/qt/application.h"
#include "platform/qt/control.h"
#include "platform/qt/create_window.h"
#include "platform/qt/geometry.h"
#include "platform/qt/graphics.h"
#include "platform/qt/modal_loop.h"
#include "platform/qt/navigation.h"
#include "platform/qt/window_class.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <cstring>

namespace {

// value x numerator / denominator, rounded to the nearest, halves away from 0.
int MulDiv(int value, int numerator, int denominator) {
    const long long product = static_cast<long long>(value) * numerator;
    const long long half = product < 0 ? -(denominator / 2) : denominator / 2;
    return static_cast<int>((product + half) / denominator);
}

struct DialogUnits {
    QSize base;

    QPoint Point(int x, int y) const {
        return {MulDiv(x, base.width(), 4), MulDiv(y, base.height(), 8)};
    }
    QRect Rect(int x, int y, int width, int height) const {
        const QPoint size = Point(width, height);
        return {Point(x, y), QSize(size.x(), size.y())};
    }
};

QScreen* ScreenOf(const ModalLoop& loop) {
    const QWindow* owner = loop.OwnerWindow();
    return owner == nullptr ? QGuiApplication::primaryScreen() : owner->screen();
}

// Where the client area goes on the screen.
QRect DialogPlace(const DialogTemplate& description, const DialogUnits& units,
                  const ModalLoop& loop) {
    QRect place = units.Rect(description.x, description.y, description.width, description.height);
    const QScreen* screen = ScreenOf(loop);
    if ((description.style & DS_CENTER) != 0 && screen != nullptr) {
        place.moveCenter(screen->availableGeometry().center());
    } else if (const QWindow* owner = loop.OwnerWindow()) {
        place.translate(owner->mapToGlobal(QPoint(0, 0)));
    }
    return place;
}

bool MakeControls(HWND dialog, const DialogTemplate& description, const DialogUnits& units,
                  HINSTANCE instance, HFONT font) {
    for (const DialogItemTemplate& item : description.items) {
        const QRect place = units.Rect(item.x, item.y, item.width, item.height);
        const HWND control = MakeWindow({item.className, item.text, item.style | WS_CHILD,
                                         item.exStyle, place.x(), place.y(), place.width(),
                                         place.height(), dialog, item.id, instance, nullptr});
        if (control == nullptr || !IsWindow(dialog)) {
            return false;
        }
        SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
        if ((SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) != 0) {
            FindWindowOf(dialog)->defaultId = item.id;
        }
    }
    return true;
}

HWND MakeDialog(const DialogTemplate& description, HINSTANCE instance, HWND parent,
                DLGPROC procedure, const ModalLoop& loop) {
    const char* face = description.fontFace.c_str();
    const DialogUnits units{DialogBaseUnits(face, description.fontPoints)};
    const QRect place = DialogPlace(description, units, loop);
    const HWND dialog = MakeWindow(
        {kDialogClassName, description.title, description.style & ~WS_CHILD, description.exStyle,
         place.x(), place.y(), place.width(), place.height(), parent, 0, instance, nullptr});
    Window* window = FindWindowOf(dialog);
    if (window == nullptr) {
        return nullptr;
    }
    // The template tells the size of the client area.
    PlaceWindow(*window, WindowRectOf(*window, place));
    window->dialogProcedure = procedure;
    const HFONT font = FontForTemplate(face, description.fontPoints);
    SendMessageA(dialog, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    if (!MakeControls(dialog, description, units, instance, font)) {
        DestroyWindow(dialog);
        return nullptr;
    }
    return dialog;
}

void Initialise(HWND dialog, LPARAM param) {
    const HWND first = NextTabStop(dialog, nullptr, false);
    const LRESULT systemSetsFocus =
        SendMessageA(dialog, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), param);
    if (systemSetsFocus != 0 && IsWindow(dialog)) {
        // The procedure may have disabled or hidden what came first.
        FocusControl(IsUsable(first) ? first : NextTabStop(dialog, nullptr, false));
    }
}

INT_PTR RunDialog(HWND dialog, ModalLoop& loop, LPARAM param) {
    loop.Enter(dialog);
    Initialise(dialog, param);
    if (loop.Runs()) {
        loop.Show();
        SendSize(dialog);
        loop.Run();
    }
    loop.Leave();
    DestroyWindow(dialog);
    return loop.Result();
}

void FocusInside(HWND dialog) {
    FocusControl(NextTabStop(dialog, nullptr, false));
}

LRESULT DefaultProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    Window& window = *FindWindowOf(dialog);
    switch (message) {
    case WM_CLOSE: {
        const HWND cancel = GetDlgItem(dialog, IDCANCEL);
        if (cancel == nullptr || IsWindowEnabled(cancel)) {
            SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                         reinterpret_cast<LPARAM>(cancel));
        }
        return 0;
    }
    case WM_SETFOCUS:
        FocusInside(dialog);
        return 0;
    case WM_SETFONT:
        window.font = reinterpret_cast<HFONT>(wParam);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(window.font);
    default:
        return DefWindowProcA(dialog, message, wParam, lParam);
    }
}

} // namespace

LRESULT DialogClassProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    const DLGPROC procedure = FindWindowOf(dialog)->dialogProcedure;
    if (procedure == nullptr) {
        return DefaultProc(dialog, message, wParam, lParam);
    }
    SetWindowLongPtrA(dialog, DWLP_MSGRESULT, 0);
    const INT_PTR handled = procedure(dialog, message, wParam, lParam);
    if (!IsWindow(dialog) || message == WM_INITDIALOG) {
        return handled;
    }
    if (handled != 0) {
        return GetWindowLongPtrA(dialog, DWLP_MSGRESULT);
    }
    return DefaultProc(dialog, message, wParam, lParam);
}

extern "C" {

INT_PTR DialogBoxParamA(HINSTANCE instance, LPCSTR templateName, HWND parent, DLGPROC procedure,
                        LPARAM param) {
    const auto id = reinterpret_cast<std::uintptr_t>(templateName);
    if (!EnsureApplication() || id > 0xFFFF) {
        return -1;
    }
    if (IsWindowHandle(parent) && !IsWindow(parent)) {
        return 0;
    }
    const auto description = LoadDialogTemplate(instance, static_cast<u16>(id));
    if (!description) {
        return -1;
    }
    ModalLoop loop(parent);
    const HWND dialog = MakeDialog(*description, instance, parent, procedure, loop);
    return dialog == nullptr ? -1 : RunDialog(dialog, loop, param);
}

BOOL EndDialog(HWND dialog, INT_PTR result) {
    Window* window = FindWindowOf(dialog);
    if (window == nullptr || window->modal == nullptr) {
        return 0;
    }
    window->modal->End(result);
    return 1;
}

} // extern "C"

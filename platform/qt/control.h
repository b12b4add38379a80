// The kinds of controls: what a dialog template may name besides registered classes.
#pragma once

#include "platform/qt/window.h"

#include <string_view>

// Messages and answers between dialogs and their controls.
constexpr UINT WM_GETDLGCODE = 135;
constexpr UINT EM_SETSEL = 177;
constexpr UINT BM_SETSTYLE = 244;
constexpr LRESULT DLGC_WANTARROWS = 0x0001;
constexpr LRESULT DLGC_WANTALLKEYS = 0x0004;
constexpr LRESULT DLGC_HASSETSEL = 0x0008;
constexpr LRESULT DLGC_DEFPUSHBUTTON = 0x0010;
constexpr LRESULT DLGC_UNDEFPUSHBUTTON = 0x0020;
constexpr LRESULT DLGC_RADIOBUTTON = 0x0040;
constexpr LRESULT DLGC_WANTCHARS = 0x0080;
constexpr LRESULT DLGC_STATIC = 0x0100;
constexpr LRESULT DLGC_BUTTON = 0x2000;

// A kind belongs to a class and, where `typeMask` is not 0, to one value of these style bits.
struct ControlKind {
    const char* className;
    DWORD typeMask;
    DWORD type;
    QWidget* (*make)(const Window& window, QWidget* parent);
    // Shows a text that has changed; null for controls without one.
    void (*showText)(QWidget& widget, const QString& text);
    WNDPROC procedure;
};

const ControlKind* FindControlKind(std::string_view className, DWORD style);
bool IsControlClass(std::string_view className);

// What all controls do alike: text and font.
LRESULT DefControlProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

// Sends the parent WM_COMMAND.
void NotifyParent(HWND control, UINT code);

// The kinds of control_*.cpp.
extern const ControlKind kPushButton;
extern const ControlKind kDefaultPushButton;
extern const ControlKind kCheckBox;
extern const ControlKind kAutoCheckBox;
extern const ControlKind kRadioButton;
extern const ControlKind kAutoRadioButton;
extern const ControlKind kGroupBox;
extern const ControlKind kOwnerDrawnButton;
extern const ControlKind kEtchedFrame;
extern const ControlKind kStaticText;
extern const ControlKind kScrollBar;
extern const ControlKind kEdit;
extern const ControlKind kDropDownList;

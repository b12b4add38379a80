// What the kinds of the class "Button" have in common.
#pragma once

#include "platform/qt/control.h"

#include <QAbstractButton>

constexpr DWORD kButtonTypeMask = 0xF;

// A click of the button tells the parent. Buttons take the focus when they are clicked.
void PrepareButton(const Window& window, QAbstractButton& button);

void ShowButtonText(QWidget& widget, const QString& text);

// BM_CLICK and what all controls do.
LRESULT DefButtonProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

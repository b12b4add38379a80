// Drives a modal dialog as a person does: a timer waits for the dialog to open, then a script sends
// it messages.
#pragma once

#include "platform/types.h"
#include "platform/win32.h"
#include <zq/document.h>

#include <functional>
#include <string>

using DialogScript = std::function<void(HWND dialog)>;

// Calls `open`, which shows a dialog modally, and runs `script` on the dialog once it is shown. A
// dialog that the script leaves open is cancelled. Fails the test when no dialog appears.
void WithDialog(const std::function<void()>& open, const DialogScript& script);

// The same for GetZQParam; gives its result.
i32 RunEffectDialog(EffectId effect, DocHandle document, void* params, const DialogScript& script);

// What a person does in a dialog.
void Scroll(HWND dialog, int bar, int code, int thumb = 0);
void Click(HWND dialog, int control);
void PressOk(HWND dialog);
void PressCancel(HWND dialog);

// What a person sees.
std::string TitleOf(HWND window);
std::string TextOf(HWND dialog, int control);
bool IsChecked(HWND dialog, int control);
bool IsEnabled(HWND dialog, int control);

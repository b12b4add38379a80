// Mouse messages and the capture.
#pragma once

#include "platform/qt/window.h"

class QEvent;
class QMouseEvent;

// Sends a mouse message with the event's place. Buttons other than the left one send nothing.
void SendMouse(HWND handle, UINT message, const QMouseEvent& event);

// A window that goes holds the mouse no more.
void ForgetCapture(HWND handle);

// Hands an event that is meant for another window to the one that holds the mouse; true when done.
bool RedirectToCapture(HWND receiver, QEvent& event);

// The Qt application that windows stand on: the host's, or one of the layer's own.
#pragma once

#include <QtCore/qnamespace.h>

#include <functional>

// Makes an application when none runs, and attaches the layer to it. False when there is no way to
// show a window, and off the application's thread.
bool EnsureApplication();

// True on the thread of a running application.
bool OnGuiThread();

// Runs `call` from the event loop; false without an attached application. While a program asks for
// keys (see key_pump.h) it waits.
bool PostCall(std::function<void()> call, int priority = Qt::NormalEventPriority);

// Key presses where the display cannot be asked beside the application's own events: the events are
// fetched, and all that could disturb the program that asks is kept for later.
#pragma once

#include <functional>

class QEvent;
class QObject;

// Fetches what is pending. Presses of keys that can be asked for are noted and go no further.
void PumpKeys();

// While events are being fetched: takes over a call or an input event, to do it later. False at
// all other times.
bool HoldWhilePumping(std::function<void()>& call);
bool HoldWhilePumping(QObject* receiver, QEvent& event);

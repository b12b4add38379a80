// Keys that programs ask for while they work, without taking part in the flow of events.
#pragma once

#include "platform/types.h"
#include "platform/win32.h"

class QKeyEvent;

// One of the keys that can be asked for.
struct KeyRow {
    int virtualKey;
    int qtKey;
    unsigned long x11Symbol;
};

// The keys that can be asked for; ends with a row of zeros.
extern const KeyRow kKeys[];

// What a source of key events has seen: the key went down or up while a window of the layer was
// active. `time` is the display's, in milliseconds.
void NotePress(int virtualKey, u32 time);
void NoteRelease(int virtualKey);

// A window has used the press up, and nobody else is to hear of it.
void UseUpPress(int virtualKey);

// Whether the event is a press that a program has been told of already, or its repetition.
bool WasAnswered(const QKeyEvent& event);

// GetAsyncKeyState.
SHORT AskKeyState(int virtualKey);

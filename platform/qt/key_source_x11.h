// Key presses on X11, over a connection of its own: asking dispatches no event of the application.
#pragma once

// Notes presses and releases since the last call; false where there is no X11 to ask.
bool ReadX11Keys();

// The same, after everything that the display has seen so far has arrived. Opens no connection.
void SynchroniseX11Keys();

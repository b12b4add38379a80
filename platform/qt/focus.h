// Focus and activation.
#pragma once

class QWidget;

// Tells the windows that lost and got the focus.
void MoveFocus(QWidget* before, QWidget* now);

// Whether the desktop's active window is one of the layer's.
bool OwnWindowIsActive();

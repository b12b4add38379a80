// Pictures of the dialogs, made without a person.
#pragma once

#include <zq/document.h>

#include <QString>

class MainWindow;

// Opens each dialog over the window's picture and the Effect Browser with three of its effects, or
// only the dialog of `effect` where it is not 0; moves the first control, waits for the After pane
// and writes a PNG into `folder`, which is made if need be. True when all were written; what was
// not is told on the standard error.
bool MakeShots(MainWindow& window, const QString& folder, EffectId effect);

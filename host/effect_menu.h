// The menu of the effects that have a dialog.
#pragma once

#include <zq/document.h>

#include <functional>

class QMenu;

// Adds one entry for each effect, in the catalogue's order.
void FillEffectMenu(QMenu& menu, const std::function<void(EffectId)>& choose);

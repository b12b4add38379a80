// The effects as zqhost offers them: in families, and Maximum and Minimum as two.
#pragma once

#include <zq/document.h>

#include <functional>
#include <span>

class QMenu;

struct EffectOffer {
    EffectId id;
    const char* name;
    const char* family;  // with the letter that opens its menu
    int32_t takeMaximum; // of effect 20, whose record says beforehand which of the two it is
};

// Family by family, each in the order of its effects' numbers.
std::span<const EffectOffer> EffectOffers();

// The first offer of an effect; null for one without a dialog.
const EffectOffer* FindEffectOffer(EffectId id);

// Adds a menu for each family, with an entry for each of its effects.
void AddEffectMenus(QMenu& menu, const std::function<void(const EffectOffer&)>& choose);

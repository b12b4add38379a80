// The effects as zqhost offers them: all that the engine has, in families, and Maximum and Minimum
// as two.
#pragma once

#include "platform/types.h"
#include <zq/document.h>

#include <array>
#include <functional>
#include <span>

class QMenu;

// Room for every effect's record, and for what the browser carries of one; aligned as records are.
struct alignas(u32) EffectRecord : std::array<u8, 300> {};

struct EffectOffer {
    EffectId id;
    const char* name;
    const char* family; // with the letter that opens its menu
    bool hasDialog;     // else it runs at once, with its defaults
    i32 takeMaximum;    // of effect 20, whose record says beforehand which of the two it is
};

// Family by family, each in the order of its effects' numbers.
std::span<const EffectOffer> EffectOffers();

// The first offer of an effect; null for a number that the engine does not know.
const EffectOffer* FindEffectOffer(EffectId id);

// The record that an effect begins with.
EffectRecord DefaultRecord(const EffectOffer& offer);

// Adds a menu for each family, with an entry for each of its effects.
void AddEffectMenus(QMenu& menu, const std::function<void(const EffectOffer&)>& choose);

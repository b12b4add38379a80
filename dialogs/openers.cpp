#include "dialogs/openers.h"

#include <algorithm>
#include <iterator>

namespace {

struct OpenerRow {
    EffectId effect;
    Opener opener;
};

constexpr OpenerRow kOpenerTable[] = {
    {1, OpenBrightnessContrast},
    {4, OpenColorReduction},
    {7, OpenThreshold},
    {22, OpenFindContour},
};

} // namespace

Opener FindOpener(EffectId effect) {
    const auto row = std::ranges::find(kOpenerTable, effect, &OpenerRow::effect);
    return row == std::end(kOpenerTable) ? nullptr : row->opener;
}

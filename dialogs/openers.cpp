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
    {2, OpenHueSaturation},
    {4, OpenColorReduction},
    {7, OpenThreshold},
    {8, OpenSquareSize},
    {17, OpenSquareSize},
    {18, OpenUnsharpMask},
    {20, OpenSquareSize},
    {21, OpenSquareSize},
    {22, OpenFindContour},
    {32, OpenSketch},
    {33, OpenIntensity},
    {34, OpenIntensity},
    {35, OpenIntensity},
    {36, OpenIntensity},
    {37, OpenIntensity},
    {38, OpenIntensity},
    {39, OpenIntensity},
    {40, OpenIntensity},
    {41, OpenIntensity},
    {48, OpenIntensity},
    {49, OpenIntensity},
    {50, OpenIntensity},
    {51, OpenGrid3D},
    {52, OpenMosaic},
    {53, OpenMotionBlur},
    {54, OpenEmboss},
    {65, OpenRibbon},
};

} // namespace

Opener FindOpener(EffectId effect) {
    const auto row = std::ranges::find(kOpenerTable, effect, &OpenerRow::effect);
    return row == std::end(kOpenerTable) ? nullptr : row->opener;
}

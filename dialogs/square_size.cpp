// One dialog for the five filters that look at a square of pixels: its caption and effect depend on
// what it was opened for.
#include "dialogs/dialog_frame.h"
#include "dialogs/openers.h"
#include "dialogs/scroll_bars.h"
#include "resources/resource.h"
#include <zq/params.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr EffectId kRankFilter = 20;

struct SquareSizeContext {
    DocHandle document;
    ServedEffect served;
    // Of the rank filter; the other filters' records are its first word.
    RankFilterParams record;
};

// The rank filter's caption is that of its Minimum.
constexpr ServedEffect kSquareSizeFilters[] = {
    {8, IDS_AVERAGE}, {17, IDS_GAUSSIAN_BLUR}, {kRankFilter, IDS_MINIMUM}, {21, IDS_MEDIAN}};

ServedEffect SquareSizeFilterOf(const void* context) {
    return static_cast<const SquareSizeContext*>(context)->served;
}

void* RebuildSquareSize(HWND window, void* context) {
    RankFilterParams& record = static_cast<SquareSizeContext*>(context)->record;
    record.size = ScrollBarPosition(window, IDC_DISTANCE_BAR);
    return &record;
}

constexpr DialogKind kSquareSize{
    .dialog = IDD_SQUARE_SIZE,
    .servedEffect = SquareSizeFilterOf,
    .rebuildRecord = RebuildSquareSize,
    .cancelledResult = 0,
};

} // namespace

i32 OpenSquareSize(EffectId effect, HWND parent, DocHandle document, void* params) {
    const auto* filter = std::ranges::find(kSquareSizeFilters, effect, &ServedEffect::effect);
    if (filter == std::end(kSquareSizeFilters)) {
        return 0;
    }
    SquareSizeContext context{document, *filter, {}};
    if (effect == kRankFilter && static_cast<const RankFilterParams*>(params)->takeMaximum != 0) {
        context.served.caption = IDS_MAXIMUM;
        context.record.takeMaximum = 1;
    }
    if (RunDialog<kSquareSize>(parent, &context) <= 0) {
        return 0;
    }
    static_cast<SquareSizeParams*>(params)->size = context.record.size;
    return 1;
}

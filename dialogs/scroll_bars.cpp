#include "dialogs/scroll_bars.h"

#include "platform/types.h"
#include "resources/resource.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

// clang-format off
// One row per bar, by rising dialog number and effect.
constexpr ScrollBarRow kScrollBarTable[] = {
    // dialog                 bar                   label                   min  max start line page zero
    {IDD_BRIGHTNESS_CONTRAST, IDC_FIRST_BAR,        IDC_FIRST_VALUE,          0, 255,  128,   1,  16, 128},
    {IDD_BRIGHTNESS_CONTRAST, IDC_SECOND_BAR,       IDC_SECOND_VALUE,         0, 255,  128,   1,  16, 128},
    {IDD_HUE_SATURATION,      IDC_FIRST_BAR,        IDC_FIRST_VALUE,          0, 360,  180,   1,  30, 180},
    {IDD_HUE_SATURATION,      IDC_SECOND_BAR,       IDC_SECOND_VALUE,         0, 200,  100,   1,  20, 100, BarTrait::Percent},
    {IDD_MOSAIC,              IDC_WIDTH_BAR,        IDC_WIDTH_VALUE,          2,  32,    5,   1,   5,   0, BarTrait::WithoutEnds},
    {IDD_MOSAIC,              IDC_HEIGHT_BAR,       IDC_HEIGHT_VALUE,         2,  32,    5,   1,   5,   0, BarTrait::WithoutEnds},
    {IDD_COLOR_REDUCTION,     IDC_FIRST_BAR,        IDC_FIRST_VALUE,          2, 128,    8,   1,  16,   0},
    {IDD_THRESHOLD,           IDC_FIRST_BAR,        IDC_FIRST_VALUE,          0, 255,  128,   1,  16,   0},
    {IDD_SKETCH,              IDC_FIRST_BAR,        IDC_FIRST_VALUE,          0, 254,    0,   1,  16,   0},
    {IDD_FIND_CONTOUR,        IDC_CONTOUR_BAR,      IDC_CONTOUR_VALUE,        1, 254,  128,   1,  16,   0},
    {IDD_EMBOSS,              IDC_DISTANCE_BAR,     IDC_DISTANCE_VALUE,       1,  10,    2,   1,   2,   0},
    {IDD_MOTION_BLUR,         IDC_DISTANCE_BAR,     IDC_DISTANCE_VALUE,       2,  32,   10,   1,   5,   0},
    {IDD_SQUARE_SIZE,         IDC_DISTANCE_BAR,     IDC_DISTANCE_VALUE,       2,  32,    3,   1,   4,   0},
    {IDD_INTENSITY,           IDC_INTENSITY_BAR,    IDC_INTENSITY_VALUE,      1, 100,   50,   1,  10,   0},
    {IDD_INTENSITY,           IDC_INTENSITY_BAR,    IDC_INTENSITY_VALUE,      1,  15,    2,   1,   2,   0, BarTrait::None, 40},
    {IDD_RIBBON,              IDC_FREQUENCY_BAR,    IDC_FREQUENCY_VALUE,      0, 100,   25,   1,  10,   0},
    {IDD_RIBBON,              IDC_AMPLITUDE_BAR,    IDC_AMPLITUDE_VALUE,      0, 100,   25,   1,  10,   0},
    {IDD_TONE_ADJUSTMENT,     IDC_HIGHLIGHT_BAR,    IDC_HIGHLIGHT_VALUE,   -100, 100,    0,   1,  10,   0},
    {IDD_TONE_ADJUSTMENT,     IDC_MIDTONE_BAR,      IDC_MIDTONE_VALUE,     -100, 100,    0,   1,  10,   0},
    {IDD_TONE_ADJUSTMENT,     IDC_SHADOW_BAR,       IDC_SHADOW_VALUE,      -100, 100,    0,   1,  10,   0},
    {IDD_UNSHARP_MASK,        IDC_UNSHARP_SIZE_BAR, IDC_UNSHARP_SIZE_VALUE,   2,  32,    3,   1,   4,   0},
    {IDD_UNSHARP_MASK,        IDC_UNSHARP_EFFECT_BAR, IDC_UNSHARP_EFFECT_VALUE, 1, 100, 100,   1,  10,   0},
    {IDD_UNSHARP_MASK,        IDC_UNSHARP_THRESHOLD_BAR, IDC_UNSHARP_THRESHOLD_VALUE, 0, 255, 0, 1, 16, 0},
};
// clang-format on

using RowKey = std::pair<int, EffectId>;

constexpr RowKey KeyOf(const ScrollBarRow& row) {
    return {row.dialog, row.effect};
}

static_assert(std::ranges::is_sorted(kScrollBarTable, std::ranges::less(), KeyOf));

std::span<const ScrollBarRow> RowsWith(const RowKey& key) {
    const auto* first = std::ranges::lower_bound(kScrollBarTable, key, std::ranges::less(), KeyOf);
    const auto* last = std::ranges::upper_bound(kScrollBarTable, key, std::ranges::less(), KeyOf);
    return {first, last};
}

void ShowValue(HWND window, const ScrollBarRow& row, int position) {
    char text[16];
    std::snprintf(text, sizeof text, row.trait == BarTrait::Percent ? "%d%%" : "%d",
                  position - row.zero);
    SetDlgItemTextA(window, row.label, text);
}

} // namespace

std::span<const ScrollBarRow> ScrollBarsOf(int dialog, EffectId effect) {
    const std::span<const ScrollBarRow> own = RowsWith({dialog, effect});
    return own.empty() ? RowsWith({dialog, 0}) : own;
}

const ScrollBarRow* FindScrollBar(int dialog, EffectId effect, int bar) {
    const std::span<const ScrollBarRow> rows = ScrollBarsOf(dialog, effect);
    const auto row = std::ranges::find(rows, bar, &ScrollBarRow::bar);
    return row == rows.end() ? nullptr : &*row;
}

void OpenScrollBars(HWND window, int dialog, EffectId effect) {
    for (const ScrollBarRow& row : ScrollBarsOf(dialog, effect)) {
        const HWND bar = GetDlgItem(window, row.bar);
        SetScrollRange(bar, SB_CTL, row.minimum, row.maximum, FALSE);
        SetScrollPos(bar, SB_CTL, row.start, FALSE);
        if (row.trait != BarTrait::Percent) {
            ShowValue(window, row, row.start);
        }
    }
}

bool FollowScrollBar(HWND window, int dialog, EffectId effect, WPARAM wParam, LPARAM lParam) {
    const HWND bar = reinterpret_cast<HWND>(lParam);
    const ScrollBarRow* row = FindScrollBar(dialog, effect, GetDlgCtrlID(bar));
    if (row == nullptr) {
        return false;
    }
    const std::optional<int> moved = ScrolledPosition(*row, GetScrollPos(bar, SB_CTL), wParam);
    if (moved) {
        MoveScrollBar(window, *row, *moved);
    }
    return moved.has_value();
}

std::optional<int> ScrolledPosition(const ScrollBarRow& row, int position, WPARAM wParam) {
    const bool hasEnds = row.trait != BarTrait::WithoutEnds;
    switch (LOWORD(wParam)) {
    case SB_LINEUP:
        return position - row.line;
    case SB_LINEDOWN:
        return position + row.line;
    case SB_PAGEUP:
        return position - row.page;
    case SB_PAGEDOWN:
        return position + row.page;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        return static_cast<i16>(HIWORD(wParam));
    case SB_TOP:
        return hasEnds ? std::optional(row.minimum) : std::nullopt;
    case SB_BOTTOM:
        return hasEnds ? std::optional(row.maximum) : std::nullopt;
    default:
        return std::nullopt;
    }
}

void MoveScrollBar(HWND window, const ScrollBarRow& row, int position) {
    const int inRange = std::clamp(position, row.minimum, row.maximum);
    SetScrollPos(GetDlgItem(window, row.bar), SB_CTL, inRange, TRUE);
    ShowValue(window, row, inRange);
}

int ScrollBarPosition(HWND window, int bar) {
    return GetScrollPos(GetDlgItem(window, bar), SB_CTL);
}

int ScrollBarValue(HWND window, int dialog, int bar) {
    const ScrollBarRow* row = FindScrollBar(dialog, 0, bar);
    return ScrollBarPosition(window, bar) - (row == nullptr ? 0 : row->zero);
}

int ScrollBarStart(int dialog, int bar) {
    const ScrollBarRow* row = FindScrollBar(dialog, 0, bar);
    return row == nullptr ? 0 : row->start;
}

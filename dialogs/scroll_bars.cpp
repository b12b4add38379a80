#include "dialogs/scroll_bars.h"

#include "platform/types.h"
#include "resources/resource.h"

#include <algorithm>
#include <optional>

namespace {

// clang-format off
// One row per bar, by rising dialog number.
constexpr ScrollBarRow kScrollBarTable[] = {
    // dialog                 bar               label              min  max start line page zero
    {IDD_BRIGHTNESS_CONTRAST, IDC_FIRST_BAR,    IDC_FIRST_VALUE,     0, 255,  128,   1,  16, 128},
    {IDD_BRIGHTNESS_CONTRAST, IDC_SECOND_BAR,   IDC_SECOND_VALUE,    0, 255,  128,   1,  16, 128},
    {IDD_COLOR_REDUCTION,     IDC_FIRST_BAR,    IDC_FIRST_VALUE,     2, 128,    8,   1,  16,   0},
    {IDD_THRESHOLD,           IDC_FIRST_BAR,    IDC_FIRST_VALUE,     0, 255,  128,   1,  16,   0},
    {IDD_FIND_CONTOUR,        IDC_CONTOUR_BAR,  IDC_CONTOUR_VALUE,   1, 254,  128,   1,  16,   0},
};
// clang-format on
static_assert(std::ranges::is_sorted(kScrollBarTable, std::ranges::less(), &ScrollBarRow::dialog));

void ShowValue(HWND window, const ScrollBarRow& row, int position) {
    SetDlgItemInt(window, row.label, static_cast<UINT>(position - row.zero), TRUE);
}

// Where a scroll code takes a bar, before it is brought into the range; nothing for a code that
// moves nothing.
std::optional<int> ScrolledPosition(const ScrollBarRow& row, int position, WPARAM wParam) {
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
        return row.minimum;
    case SB_BOTTOM:
        return row.maximum;
    default:
        return std::nullopt;
    }
}

} // namespace

std::span<const ScrollBarRow> ScrollBarsOf(int dialog) {
    const auto [first, last] = std::ranges::equal_range(kScrollBarTable, dialog,
                                                        std::ranges::less(), &ScrollBarRow::dialog);
    return {first, last};
}

void OpenScrollBars(HWND window, int dialog) {
    for (const ScrollBarRow& row : ScrollBarsOf(dialog)) {
        const HWND bar = GetDlgItem(window, row.bar);
        SetScrollRange(bar, SB_CTL, row.minimum, row.maximum, FALSE);
        SetScrollPos(bar, SB_CTL, row.start, FALSE);
        ShowValue(window, row, row.start);
    }
}

bool FollowScrollBar(HWND window, int dialog, WPARAM wParam, LPARAM lParam) {
    const HWND bar = reinterpret_cast<HWND>(lParam);
    const std::span<const ScrollBarRow> rows = ScrollBarsOf(dialog);
    const auto row = std::ranges::find(rows, GetDlgCtrlID(bar), &ScrollBarRow::bar);
    if (row == rows.end()) {
        return false;
    }
    const std::optional<int> moved = ScrolledPosition(*row, GetScrollPos(bar, SB_CTL), wParam);
    if (!moved) {
        return false;
    }
    const int position = std::clamp(*moved, row->minimum, row->maximum);
    SetScrollPos(bar, SB_CTL, position, TRUE);
    ShowValue(window, *row, position);
    return true;
}

int ScrollBarPosition(HWND window, int bar) {
    return GetScrollPos(GetDlgItem(window, bar), SB_CTL);
}

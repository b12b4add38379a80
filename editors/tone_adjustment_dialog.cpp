// Tone Adjustment: three bars bend a tone curve, which a graph shows above the picture's histogram.
#include "dialogs/dialog_frame.h"
#include "dialogs/module_instance.h"
#include "dialogs/scroll_bars.h"
#include "editors/histogram.h"
#include "editors/openers.h"
#include "editors/super_window.h"
#include "editors/tone_graph.h"
#include "engine/colour/tone_adjustment.h"
#include "image/document.h"
#include "resources/resource.h"
#include <zq/params.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <span>

namespace {

constexpr RadioGroup kChannelGroup[] = {{IDC_CHANNEL_RGB, IDC_CHANNEL_B}};

struct ToneAdjustmentContext {
    DocHandle document;
    ToneAdjustmentParams record;
    Histogram histogram;
    BarTable bars[kChannels];
};

// What the graph shows.
ToneCurve toneCurve;

ToneAdjustmentContext& ContextIn(void* context) {
    return *static_cast<ToneAdjustmentContext*>(context);
}

std::size_t CheckedChannel(HWND window) {
    const int checked = CheckedRadio(window, kChannelGroup[0]);
    return checked < 0 ? kChannels - 1 : static_cast<std::size_t>(checked);
}

// ---- Opening ----

DibHandle CurrentPicture(DocHandle document) {
    const LayerEntry* layer = LockLayerEntry(document, GetCurrentLayer(document));
    if (layer == nullptr) {
        return 0;
    }
    const DibHandle picture = layer->image;
    UnlockDocument(document);
    return picture;
}

bool OpenGraph(HWND window, void* context) {
    ToneAdjustmentContext& tone = ContextIn(context);
    std::iota(toneCurve.begin(), toneCurve.end(), u8{0});
    tone.histogram = CountTones(CurrentPicture(tone.document), IsGreyDocument(tone.document) != 0);
    const HWND graph = GetDlgItem(window, IDC_TONE_GRAPH);
    const LONG height = GraphInside(graph).cy;
    std::ranges::transform(tone.histogram.channels, tone.bars,
                           [=](const CountTable& counts) { return MakeBars(counts, height); });
    MakeGraphSquare(graph);
    return false;
}

// ---- The graph ----

constexpr COLORREF kCurveColors[kChannels] = {0x000000, 0x0000FF, 0x00FF00, 0xFF0000};

INT_PTR DrawGraph(HWND window, void* context, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kSuperDrawMessage || wParam != IDC_TONE_GRAPH || context == nullptr) {
        return FALSE;
    }
    const auto dc = reinterpret_cast<HDC>(lParam);
    RECT client{};
    GetClientRect(GetDlgItem(window, IDC_TONE_GRAPH), &client);
    const std::size_t channel = CheckedChannel(window);
    DrawToneBars(dc, ContextIn(context).bars[channel], client);
    DrawToneCurve(dc, toneCurve, kCurveColors[channel], client);
    return TRUE;
}

// Twice the bars' values: the graph shows an effect twice as strong as that of the record.
void FollowGraph(HWND window, void*) {
    const auto doubled = [window](int bar) { return 2 * ScrollBarPosition(window, bar); };
    toneCurve = BuildToneTable(doubled(IDC_HIGHLIGHT_BAR), doubled(IDC_MIDTONE_BAR),
                               doubled(IDC_SHADOW_BAR));
    InvalidateRect(GetDlgItem(window, IDC_TONE_GRAPH), nullptr, FALSE);
}

// ---- Auto ----

void DragTo(HWND window, int bar, int position) {
    SendMessageA(window, WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, position),
                 reinterpret_cast<LPARAM>(GetDlgItem(window, bar)));
}

// Brings highlight and shadow to the ends of what the channel uses, on the graph's doubled scale.
void FindEndPoints(HWND window, const CountTable& counts) {
    if (!counts) {
        return;
    }
    constexpr int kFurthest = 100;
    const std::span<const u32> entries(counts.Entries(), kTones);
    const auto occurs = [](u32 count) { return count != 0; };
    const auto lowest = std::ranges::find_if(entries, occurs) - entries.begin();
    const auto above = std::find_if(entries.rbegin(), entries.rend(), occurs);
    const int first = std::min(static_cast<int>(lowest), 255);
    const int last = std::max(static_cast<int>(entries.rend() - above) - 1, 0);
    DragTo(window, IDC_HIGHLIGHT_BAR, std::min((256 - last) / 2, kFurthest));
    DragTo(window, IDC_SHADOW_BAR, -std::min((first + 1) / 2, kFurthest));
}

// The bars' own messages tell the After pane.
bool Command(HWND window, void* context, int id, UINT) {
    if (id == IDC_AUTO) {
        FindEndPoints(window, ContextIn(context).histogram.channels[CheckedChannel(window)]);
    }
    return false;
}

// ---- The dialog ----

void* RebuildRecord(HWND window, void* context) {
    ToneAdjustmentParams& record = ContextIn(context).record;
    record.highlight = ScrollBarPosition(window, IDC_HIGHLIGHT_BAR);
    record.midtone = ScrollBarPosition(window, IDC_MIDTONE_BAR);
    record.shadow = ScrollBarPosition(window, IDC_SHADOW_BAR);
    record.channel = static_cast<i32>(CheckedChannel(window));
    return &record;
}

INT_PTR AcceptedWithChannel(HWND, const void* context) {
    return static_cast<const ToneAdjustmentContext*>(context)->record.channel;
}

constexpr DialogKind kToneAdjustment{
    .dialog = IDD_TONE_ADJUSTMENT,
    .effect = 67,
    .greyRule = GreyRule::OneChannel,
    .radioGroups = kChannelGroup,
    .rebuildRecord = RebuildRecord,
    .acceptedResult = AcceptedWithChannel,
    .cancelledResult = -1,
    .openControls = OpenGraph,
    .command = Command,
    .changed = FollowGraph,
    .otherMessage = DrawGraph,
};

} // namespace

i32 OpenToneAdjustment(EffectId, HWND parent, DocHandle document, void* params) {
    if (!RegisterSuperWindow(moduleInstance)) {
        return 0;
    }
    ToneAdjustmentContext context{};
    context.document = document;
    const INT_PTR result = RunDialog<kToneAdjustment>(parent, &context);
    UnregisterSuperWindow(moduleInstance);
    if (result == -1) {
        return 0;
    }
    *static_cast<ToneAdjustmentParams*>(params) = context.record;
    return 1;
}

#include "preview/wiring.h"

#include "preview/preview_control.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

struct WiringRow {
    EffectId id;
    u32 documentWord; // where the context holds the document's handle
    // The whole picture at the fitting zoom is all that this effect shows: a part of it would be
    // bent about its own centre.
    bool fixedView;
};

constexpr WiringRow kWiringTable[] = {
    {1, 0, false},  {2, 0, false},  {4, 0, false},  {7, 0, false},  {8, 0, false},  {17, 0, false},
    {18, 0, false}, {20, 0, false}, {21, 0, false}, {22, 0, false}, {25, 0, false}, {32, 0, false},
    {33, 1, false}, {34, 1, false}, {35, 1, false}, {36, 1, false}, {37, 1, false}, {38, 1, false},
    {39, 1, false}, {40, 1, false}, {41, 1, true},  {48, 1, true},  {49, 1, true},  {50, 1, true},
    {51, 0, false}, {52, 0, false}, {53, 0, false}, {54, 0, false}, {56, 0, false}, {65, 0, true},
    {67, 0, false},
};

const WiringRow* WiringOf(EffectId id) {
    const auto* row = std::find_if(std::begin(kWiringTable), std::end(kWiringTable),
                                   [id](const WiringRow& candidate) { return candidate.id == id; });
    return row == std::end(kWiringTable) ? nullptr : row;
}

DocHandle DocumentIn(const void* context, u32 word) {
    DocHandle document;
    std::memcpy(&document, static_cast<const u8*>(context) + word * sizeof(document),
                sizeof(document));
    return document;
}

PreviewControl* PaneIn(HWND dialog, int id) {
    const HWND pane = GetDlgItem(dialog, id);
    return pane == nullptr ? nullptr : PreviewControlOf(pane);
}

} // namespace

void WirePreviews(HWND dialog, void* context, EffectId id) {
    const WiringRow* wiring = WiringOf(id);
    if (context == nullptr || wiring == nullptr) {
        return;
    }
    const DocHandle document = DocumentIn(context, wiring->documentWord);
    PreviewControl* before = PaneIn(dialog, kBeforePaneId);
    PreviewControl* after = PaneIn(dialog, kAfterPaneId);
    if (before != nullptr) {
        AttachDocument(*before, document, 0, id);
        if (wiring->fixedView) {
            ShowZoomControls(*before, 0);
            before->panAllowed = 0;
        }
    }
    if (after != nullptr) {
        ShowZoomControls(*after, 0); // the Before pane's buttons zoom both
        AttachDocument(*after, document, 1, id);
        if (wiring->fixedView) {
            after->panAllowed = 0;
        }
    }
    if (before != nullptr && after != nullptr) {
        SetPeer(*before, after);
        SetPeer(*after, before);
    }
    SetWindowLongPtrA(dialog, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(context));
}

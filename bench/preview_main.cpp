// Times the road of the previews: opens every dialog on a picture of 24 megapixels, and recomputes
// its After pane (a fresh crop, the effect, painting) with the record that costs most, at the zoom
// at which the whole picture fits and at 100 percent.
#include "bench/bench_pictures.h"
#include "bench/timing.h"
#include "dialogs/catalogue.h"
#include "engine/dib_format.h"
#include "library/startup.h"
#include "pictures/dib_rows.h"
#include "preview/preview_control.h"
#include "resources/module.h"
#include <zq/zqui.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr i32 kWidth = 6000;
constexpr i32 kHeight = 4000;
constexpr i32 kRuns = 9;

OwnedBlock OpaqueMask() {
    OwnedBlock mask;
    if (NewGreyDib(kWidth, kHeight, mask) == PictureResult::Ok) {
        const BlockLock lock(mask.Handle());
        DibView view;
        if (lock && ViewDib(lock.Bytes(), BlockSize(mask.Handle()), view)) {
            std::memset(lock.Bytes() + view.head, 255, view.size - view.head);
        }
    }
    return mask;
}

OwnedBlock MakeDocument(DibHandle image, DibHandle mask) {
    OwnedBlock block(AllocateBlock(sizeof(ImageDocument)));
    const BlockLock lock(block.Handle());
    if (lock) {
        auto& document = *reinterpret_cast<ImageDocument*>(lock.Bytes());
        document.width = kWidth;
        document.height = kHeight;
        document.bitDepth = 24;
        document.layerCount = 1;
        document.layers[0].image = image;
        document.layers[0].mask = mask;
    }
    return block;
}

// Words of a record that make its effect slow; those of other effects stay as the dialog has them.
struct SlowWord {
    EffectId id;
    std::size_t word;
    i32 value;
};

constexpr SlowWord kSlowWords[] = {
    {1, 2, 40},   {2, 0, 100},  {2, 1, -50},  {8, 0, 32},   {17, 0, 32},  {18, 0, 32},
    {18, 2, 1},   {20, 0, 32},  {21, 0, 32},  {32, 0, 2},   {33, 0, 100}, {34, 0, 100},
    {35, 0, 100}, {36, 0, 100}, {37, 0, 100}, {38, 0, 100}, {39, 0, 100}, {40, 0, 15},
    {41, 0, 100}, {48, 0, 100}, {49, 0, 100}, {50, 0, 100}, {51, 2, 1},   {52, 0, 2},
    {52, 1, 2},   {53, 0, 1},   {53, 1, 32},  {54, 1, 1},   {56, 0, 3},   {65, 0, 100},
    {67, 1, 50},
};

void MakeSlow(EffectId id, void* record) {
    const auto write = [&](std::size_t word, i32 value) {
        std::memcpy(static_cast<u8*>(record) + word * sizeof value, &value, sizeof value);
    };
    for (const SlowWord& slow : kSlowWords) {
        if (slow.id == id) {
            write(slow.word, slow.value);
        }
    }
    for (std::size_t cell = 0; id == 25 && cell < 25; ++cell) {
        write(3 + cell, 1 + static_cast<i32>(cell % 3));
    }
}

// What a dialog's timer leaves behind.
struct Visit {
    EffectId id = 0;
    double opening = 0; // milliseconds
    double fitted = 0;
    double whole = 0;
    double start = 0;
};

Visit visit;

double RecomputeMilliseconds(HWND pane, PreviewControl& after) {
    return 1e3 * MedianSeconds(kRuns, [&] {
               after.dirty = 1;
               SendMessageA(pane, WM_TIMER, kPreviewTimer, 0);
               UpdateWindow(after.imageWindow);
           });
}

void CALLBACK LookForDialog(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = FindWindowA("#32770", nullptr);
    if (dialog == nullptr || IsWindowVisible(dialog) == 0) {
        return;
    }
    KillTimer(nullptr, timer);
    visit.opening = 1e3 * (ThreadSeconds() - visit.start);
    const HWND pane = GetDlgItem(dialog, kAfterPaneId);
    PreviewControl* after = PreviewControlOf(pane);
    if (after != nullptr && after->params != nullptr) {
        MakeSlow(visit.id, after->params);
        visit.fitted = RecomputeMilliseconds(pane, *after);
        SetZoomPercent(*after, 100);
        visit.whole = RecomputeMilliseconds(pane, *after);
    }
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
}

} // namespace

int main() {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const OwnedBlock image = MakeBenchPicture(kWidth, kHeight, false);
    const OwnedBlock mask = OpaqueMask();
    const OwnedBlock document = MakeDocument(image.Handle(), mask.Handle());
    if (!image || !mask || !document || !LibraryEntry(ResourceModule())) {
        std::fputs("zq_preview_bench: there is nothing to look at\n", stderr);
        return 2;
    }
    std::puts("| dialog | opening, ms | recompute fitted, ms | at 100 percent, ms |");
    std::puts("|---|--:|--:|--:|");
    for (const EffectRow& row : EffectCatalogue()) {
        i32 record[80] = {};
        visit = {.id = row.id};
        SetTimer(nullptr, 0, 1, LookForDialog);
        visit.start = ThreadSeconds();
        GetZQParam(row.id, nullptr, document.Handle(), record);
        std::printf("| %d %s | %.0f | %.2f | %.2f |\n", row.id, row.title, visit.opening,
                    visit.fitted, visit.whole);
        std::fflush(stdout);
    }
    return 0;
}

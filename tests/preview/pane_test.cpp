#include "platform/qt/graphics_testing.h"
#include "platform/qt/window_testing.h"
#include "preview/background.h"
#include "preview/preview_control.h"
#include "preview/wiring.h"
#include "resources/module.h"
#include "tests/drive/drive.h"
#include "tests/preview/fake_rkdll.h"
#include "tests/support/document_maker.h"
#include "tests/support/leak_guard.h"

#include <zq/engine.h>
#include <zq/params.h>

namespace {

const HINSTANCE kModule = ResourceModule();
constexpr char kDialogClass[] = "PanesOfATest";
constexpr EffectId kBrightness = 1;

// ---- A dialog with two panes --------------------------------------------------------------------

bool RegisterClassesOnce() {
    static const bool registered = [] {
        WNDCLASSEXA dialogClass{};
        dialogClass.cbSize = sizeof(dialogClass);
        dialogClass.lpfnWndProc = DefWindowProcA;
        dialogClass.hInstance = kModule;
        dialogClass.lpszClassName = kDialogClass;
        return RegisterClassExA(&dialogClass) != 0 && RegisterPreviewClasses(kModule);
    }();
    return registered;
}

HWND MakePane(HWND dialog, const char* windowClass, int id, void* object = nullptr) {
    return CreateWindowExA(0, windowClass, "", WS_CHILD | WS_VISIBLE, 0, 0, 94, 114, dialog,
                           reinterpret_cast<HMENU>(static_cast<std::uintptr_t>(id)), kModule,
                           object);
}

// Panes of 94 x 114 pixels, whose pictures get 88 x 89.
struct Dialog {
    HWND window = nullptr;
    PreviewControl* before = nullptr;
    PreviewControl* after = nullptr;

    explicit Dialog(bool withBefore = true) {
        EXPECT_TRUE(RegisterClassesOnce());
        window = CreateWindowExA(0, kDialogClass, "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300,
                                 nullptr, nullptr, kModule, nullptr);
        if (withBefore) {
            before = PreviewControlOf(MakePane(window, kPreviewClass, kBeforePaneId));
        }
        after = PreviewControlOf(MakePane(window, kPreviewClass, kAfterPaneId));
    }
    ~Dialog() { DestroyWindow(window); }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
};

void Tick(PreviewControl& pane) {
    SendMessageA(pane.window, WM_TIMER, kPreviewTimer, 0);
}

void Announce(PreviewControl& pane, void* record) {
    SendMessageA(pane.window, kParamsChangedMessage, 0, reinterpret_cast<LPARAM>(record));
}

void PressZoomButton(PreviewControl& pane, int id) {
    SendMessageA(pane.window, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(pane.window, id)));
}

void Drag(PreviewControl& pane, int dx, int dy) {
    SendMessageA(pane.imageWindow, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(40, 40));
    SendMessageA(pane.imageWindow, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(40 + dx, 40 + dy));
    SendMessageA(pane.imageWindow, WM_LBUTTONUP, 0, MAKELPARAM(40 + dx, 40 + dy));
}

void Repaint(HWND window) {
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
}

// The bytes of the picture in a pane's preview document.
std::vector<u8> PictureBytes(const PreviewControl& pane) {
    const BlockLock lock(pane.previewDocument);
    return BytesOf(reinterpret_cast<const ImageDocument*>(lock.Bytes())->layers[0].image);
}

bool ZoomButtonsVisible(const PreviewControl& pane) {
    const BOOL zoomIn = IsWindowVisible(GetDlgItem(pane.window, kZoomInId));
    EXPECT_EQ(zoomIn, IsWindowVisible(GetDlgItem(pane.window, kZoomOutId)));
    return zoomIn != 0;
}

// Left, top, right and bottom.
using Edges = std::vector<LONG>;

Edges EdgesOf(const RECT& place) {
    return {place.left, place.top, place.right, place.bottom};
}

// A child's place in its parent's client coordinates.
Edges PlaceOf(HWND child) {
    RECT place{};
    GetWindowRect(child, &place);
    POINT corner{0, 0};
    ClientToScreen(GetParent(child), &corner);
    OffsetRect(&place, -corner.x, -corner.y);
    return EdgesOf(place);
}

class PaneTest : public LeakGuardTest {
protected:
    // 400 x 400 fits a pane at zoom 20.
    TestDocument host{400, 400};
    Dialog dialog;
    PreviewControl& before = *dialog.before;
    PreviewControl& after = *dialog.after;
    // What the wiring looks at of a dialog's context.
    u32 context[2] = {host.Handle(), 0};

    void SetUp() override { fakeRkdll = FakeRkdll{}; }
    void Wire(EffectId id = kBrightness) { WirePreviews(dialog.window, context, id); }
    void ZoomTo(i32 percent) {
        SetZoomPercent(before, percent);
        SetZoomPercent(after, percent);
    }
};

// ---- One pane -----------------------------------------------------------------------------------

TEST_F(PaneTest, LaysOutPictureAndZoomButtons) {
    EXPECT_EQ(PlaceOf(before.imageWindow), (Edges{2, 2, 92, 93}));
    EXPECT_EQ(PlaceOf(GetDlgItem(before.window, kZoomInId)), (Edges{9, 95, 25, 114}));
    EXPECT_EQ(PlaceOf(GetDlgItem(before.window, kZoomOutId)), (Edges{70, 95, 86, 114}));
    ShowZoomControls(before, 0);
    EXPECT_EQ(PlaceOf(before.imageWindow), (Edges{2, 8, 92, 99}));
    EXPECT_FALSE(ZoomButtonsVisible(before));
    ShowZoomControls(before, 1);
    EXPECT_EQ(PlaceOf(before.imageWindow), (Edges{2, 2, 92, 93}));
    EXPECT_TRUE(ZoomButtonsVisible(before));
}

TEST_F(PaneTest, RunsTheLastAnnouncedRecordOnAnUntouchedCropAtTheNextTick) {
    const UnchangedGuard unchanged(host.Handle());
    Wire();
    const std::vector<u8> untouched = PictureBytes(after);
    BrightnessContrastParams first{0, 90, 0};
    BrightnessContrastParams record{0, -40, 10};
    Announce(after, &first);
    Announce(after, &record);
    Announce(before, &record);
    EXPECT_EQ(PictureBytes(after), untouched);

    Tick(after);
    Tick(before);
    const OwnedBlock picture = MakeBlock(untouched);
    const OwnedBlock expected(RunEffect(picture.Handle(), kBrightness, &record));
    EXPECT_EQ(PictureBytes(after), BytesOf(expected.Handle()));
    EXPECT_EQ(PictureBytes(before), untouched);

    const DocHandle shown = after.previewDocument;
    Tick(after);
    EXPECT_EQ(after.previewDocument, shown) << "a clean pane was rebuilt";
    Announce(after, &record);
    Tick(after);
    EXPECT_EQ(PictureBytes(after), BytesOf(expected.Handle())) << "the effect ran twice";

    record = {0, 0, 0}; // changes nothing, so the kernel gives no picture
    Announce(after, &record);
    Tick(after);
    EXPECT_EQ(PictureBytes(after), untouched);
    EXPECT_EQ(after.dirty + before.dirty, 0);
}

EmbossParams* announcedRecord = nullptr;
i32 depthInKernel = 0;

void ZQ_CALL NoteDepth(i32) {
    depthInKernel = announcedRecord->depth;
}

i32 ZQ_CALL StopAtOnce() {
    return 1;
}

TEST_F(PaneTest, AKernelSeesPixelCountsAtThePanesZoomAndLeavesCursorAndRecordAsTheyWere) {
    constexpr EffectId kEmboss = 54;
    EmbossParams record{5, 3, 10, 0};
    announcedRecord = &record;
    Wire(kEmboss);
    SetZoomPercent(after, 50);
    Announce(after, &record);
    const HCURSOR cursor = LoadCursorA(nullptr, IDC_WAIT);
    SetCursor(cursor);
    progressHook = NoteDepth;
    EXPECT_TRUE(ApplyPreviewEffect(after));
    EXPECT_EQ(depthInKernel, 5);
    EXPECT_EQ(record.depth, 10);
    EXPECT_EQ(GetCursor(), cursor);

    abortHook = StopAtOnce;
    EXPECT_FALSE(ApplyPreviewEffect(after));
    EXPECT_EQ(record.depth, 10);
    EXPECT_EQ(GetCursor(), cursor);
    abortHook = nullptr;
    progressHook = nullptr;
    SetCursor(LoadCursorA(nullptr, IDC_ARROW));
}

TEST_F(PaneTest, KeepsTheOldPictureWhenTheLayerCanNoLongerBeCropped) {
    Wire();
    BrightnessContrastParams record{0, 50, 0};
    Announce(after, &record);
    Tick(after);
    const std::vector<u8> shown = PictureBytes(after);
    host.SetMask(0, OwnedBlock());
    Announce(after, &record);
    Tick(after);
    EXPECT_EQ(after.dirty, 0);
    SetZoomPercent(after, 50);
    EXPECT_EQ(after.zoomPercent, 50);
    EXPECT_EQ(after.dirty, 0);
    EXPECT_EQ(PictureBytes(after), shown);
}

// The picture before where the crop fails, the crop where the effect fails; never none.
TEST_F(PaneTest, ShowsAWholePictureWhicheverAllocationFails) {
    Wire();
    BrightnessContrastParams record{0, 50, 0};
    const std::vector<u8> crop = PictureBytes(after);
    Announce(after, &record);
    Tick(after);
    const std::vector<u8> changed = PictureBytes(after);
    i32 crops = 0;
    const auto run = [&] {
        Announce(after, &record);
        Tick(after);
    };
    const std::size_t allocations = FailEachAllocation(run, [&](bool failed) {
        const std::vector<u8> shown = PictureBytes(after);
        EXPECT_TRUE(shown == changed || (failed && shown == crop));
        crops += shown == crop ? 1 : 0;
    });
    EXPECT_EQ(crops, 1);
    EXPECT_EQ(allocations, 8u); // a document, three blocks for each of two crops, the result
}

TEST_F(PaneTest, PaintsWhatTheImagingLibraryRendersInTheMiddle) {
    Wire();
    backgroundWord0 = -7;
    backgroundWord1 = 0x80000001u;
    backgroundWord2 = 0x00C0FFEEu;
    fakeRkdll.renderedSize = {41, 100};
    Repaint(after.imageWindow);
    backgroundWord0 = 0;
    backgroundWord1 = backgroundWord2 = 0;
    EXPECT_EQ(fakeRkdll.document, after.previewDocument);
    EXPECT_EQ(fakeRkdll.layer, -1);
    EXPECT_EQ(fakeRkdll.zero, 0);
    EXPECT_EQ(fakeRkdll.background.word0, -7);
    EXPECT_EQ(fakeRkdll.background.word1, 0x80000001u);
    EXPECT_EQ(fakeRkdll.background.word2, 0x00C0FFEEu);
    EXPECT_EQ(EdgesOf(fakeRkdll.rectangle), (Edges{23, 0, 64, 100}));

    fakeRkdll = FakeRkdll{};
    fakeRkdll.refuses = true;
    Repaint(after.imageWindow);
    EXPECT_EQ(fakeRkdll.renders, 1);
    EXPECT_EQ(fakeRkdll.displays, 0);
}

TEST_F(PaneTest, PaintsAroundThePictureButForARingOfOnePixel) {
    Wire();
    fakeRkdll.renderedSize = {44, 45}; // black from (22, 22) on
    Repaint(after.imageWindow);
    fakeRkdll.renderedSize = {40, 41}; // black from (24, 24) on
    Repaint(after.imageWindow);
    const Screen screen = ScreenOf(after.imageWindow);
    constexpr u32 kBlack = 0;
    constexpr u32 kLightGrey = 0xC0C0C0;
    const struct {
        int x, y;
        u32 colour;
    } pixels[] = {{0, 0, kLightGrey}, {22, 44, kLightGrey}, {23, 44, kBlack}, {44, 22, kLightGrey},
                  {44, 23, kBlack},   {44, 44, kBlack},     {64, 44, kBlack}, {65, 44, kLightGrey},
                  {44, 65, kBlack},   {44, 66, kLightGrey}};
    for (const auto& [x, y, colour] : pixels) {
        EXPECT_EQ(screen.At(x, y), colour) << x << ", " << y;
    }
}

TEST_F(PaneTest, PaintsThePercentBetweenTheButtonsWithAFontThatItDeletes) {
    Wire();
    Repaint(before.window);
    const std::size_t objects = LiveGdiObjectCount();
    const Screen at20 = ScreenOf(before.window);
    SetZoomPercent(before, 50);
    Repaint(before.window);
    const Screen at50 = ScreenOf(before.window);
    EXPECT_EQ(LiveGdiObjectCount(), objects);
    EXPECT_NE(at20.Part(25, 94, 44, 20), at50.Part(25, 94, 44, 20)); // the label
    EXPECT_EQ(at20.Part(0, 95, 25, 19), at50.Part(0, 95, 25, 19));   // a button
}

TEST_F(PaneTest, DoesNothingWithoutADocumentOrRoom) {
    BrightnessContrastParams record{0, 50, 0};
    const auto useAll = [&] {
        Announce(after, &record);
        Tick(after);
        SetZoomPercent(after, 50);
        PressZoomButton(after, kZoomInId);
        Drag(after, 5, 5);
        Repaint(after.imageWindow);
        EXPECT_FALSE(RebuildPreviewDocument(after));
        EXPECT_FALSE(ApplyPreviewEffect(after));
        EXPECT_EQ(after.previewDocument, 0u);
        EXPECT_EQ(after.zoomPercent, 100);
    };
    for (const DocHandle document : {DocHandle{0}, host.Layer(0).image, DocHandle{0x7FFF0001}}) {
        AttachDocument(after, document, 1, kBrightness);
        useAll();
    }
    SetWindowPos(after.window, nullptr, 0, 0, 4, 4, SWP_NOZORDER);
    AttachDocument(after, host.Handle(), 1, kBrightness);
    useAll();
    EXPECT_EQ(fakeRkdll.renders, 0);
}

TEST_F(PaneTest, AWindowLeavesAnObjectOfItsCallerAlone) {
    PreviewControl own;
    own.ownedByWindow = 0;
    const HWND window = MakePane(dialog.window, kMiniPreviewClass, 1, &own);
    ASSERT_EQ(PreviewControlOf(window), &own);
    AttachDocument(own, host.Handle(), 0, kBrightness);
    DestroyWindow(window);
    ASSERT_NE(own.previewDocument, 0u);
    RkImageDelete(own.previewDocument);
}

// ---- Two panes ----------------------------------------------------------------------------------

TEST_F(PaneTest, ZoomButtonsStepBothPanesBetweenTheFittingZoomAnd100) {
    Wire();
    const struct {
        int id;
        i32 zoom;
    } presses[] = {{kZoomOutId, 20}, {kZoomInId, 25},  {kZoomInId, 33},  {kZoomInId, 50},
                   {kZoomInId, 100}, {kZoomInId, 100}, {kZoomOutId, 50}, {kZoomOutId, 33},
                   {kZoomOutId, 25}, {kZoomOutId, 20}, {kZoomOutId, 20}};
    for (const auto& [id, zoom] : presses) {
        PressZoomButton(before, id);
        EXPECT_EQ(before.zoomPercent, zoom);
        EXPECT_EQ(after.zoomPercent, zoom);
        EXPECT_EQ(after.region, before.region);
    }
    EXPECT_EQ(before.region, (ViewRegion{0, 0, 400, 400}));
    EXPECT_EQ(before.dirty + after.dirty, 2);
    for (const i32 percent : {0, 19, 101}) {
        SetZoomPercent(before, percent);
        EXPECT_EQ(before.zoomPercent, 20);
    }
}

TEST_F(PaneTest, ADragOnEitherPanePansBoth) {
    Wire();
    ZoomTo(50);
    EXPECT_EQ(after.region, (ViewRegion{112, 111, 288, 289}));
    Drag(after, 3, -2);
    EXPECT_EQ(after.region, (ViewRegion{106, 107, 282, 285}));
    EXPECT_EQ(before.region, after.region);
    EXPECT_EQ(PictureBytes(before), PictureBytes(after));
    Drag(before, 1000, 1000);
    EXPECT_EQ(after.region, (ViewRegion{0, 222, 176, 400}));
    EXPECT_EQ(before.dirty + after.dirty, 2);

    before.dirty = after.dirty = 0;
    const DocHandle shown = after.previewDocument;
    Drag(after, 1, 1);                                                       // against the corner
    SendMessageA(before.imageWindow, WM_MOUSEMOVE, 0, MAKELPARAM(-70, -70)); // no button is down
    EXPECT_EQ(after.previewDocument, shown);
    EXPECT_EQ(before.dirty + after.dirty, 0);
}

TEST_F(PaneTest, APaneDestroyedInADragEndsTheDragAndTheLink) {
    Wire();
    ZoomTo(50);
    SendMessageA(before.imageWindow, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(40, 40));
    DestroyWindow(before.window);
    EXPECT_EQ(after.peer, nullptr);
    const ViewRegion start = after.region;
    SendMessageA(after.imageWindow, WM_MOUSEMOVE, 0, MAKELPARAM(70, 70));
    EXPECT_EQ(after.region, start);
}

TEST_F(PaneTest, WiringFindsTheDocumentByEffectAndLetsOtherEffectsAlone) {
    const struct {
        i32 word; // of the context; -1: nothing is wired
        std::vector<EffectId> ids;
    } cases[] = {
        {0, {1, 2, 4, 7, 8, 17, 18, 20, 21, 22, 25, 32, 51, 52, 53, 54, 56, 65, 67}},
        {1, {33, 34, 35, 36, 37, 38, 39, 40, 41, 48, 49, 50}},
        {-1, {-1, 0, 3, 5, 6, 9, 19, 23, 42, 55, 57, 64, 66, 68, 70}},
    };
    for (const auto& [word, ids] : cases) {
        context[0] = word == 0 ? host.Handle() : 0xBAD;
        context[1] = word == 1 ? host.Handle() : 0xBAD;
        const bool wires = word >= 0;
        for (const EffectId id : ids) {
            before.document = after.document = 0;
            SetWindowLongPtrA(dialog.window, GWLP_USERDATA, 77);
            Wire(id);
            EXPECT_EQ(before.document, wires ? host.Handle() : 0) << id;
            EXPECT_EQ(after.document, wires ? host.Handle() : 0) << id;
            EXPECT_EQ(GetWindowLongPtrA(dialog.window, GWLP_USERDATA),
                      wires ? reinterpret_cast<LONG_PTR>(context) : 77)
                << id;
        }
    }
    WirePreviews(dialog.window, nullptr, kBrightness);
    EXPECT_EQ(GetWindowLongPtrA(dialog.window, GWLP_USERDATA), 77);
}

TEST_F(PaneTest, OnlyTheBeforePaneOfAViewThatMovesHasZoomButtons) {
    Wire();
    EXPECT_TRUE(ZoomButtonsVisible(before));
    EXPECT_FALSE(ZoomButtonsVisible(after));
    context[1] = host.Handle();
    for (const EffectId id : {41, 48, 49, 50, 65}) {
        const Dialog fixed;
        WirePreviews(fixed.window, context, id);
        EXPECT_FALSE(ZoomButtonsVisible(*fixed.before)) << id;
        EXPECT_FALSE(ZoomButtonsVisible(*fixed.after)) << id;
        SetZoomPercent(*fixed.before, 50);
        const ViewRegion region = fixed.before->region;
        Drag(*fixed.before, 5, 5);
        Drag(*fixed.after, 5, 5);
        EXPECT_EQ(fixed.before->region, region) << id;
    }
}

TEST_F(PaneTest, AnAfterPaneWorksWithoutABeforePane) {
    const Dialog alone(false);
    WirePreviews(alone.window, context, kBrightness);
    EXPECT_EQ(alone.after->peer, nullptr);
    SetZoomPercent(*alone.after, 50);
    Drag(*alone.after, 5, 0);
    EXPECT_EQ(alone.after->region, (ViewRegion{102, 111, 278, 289}));
}

} // namespace

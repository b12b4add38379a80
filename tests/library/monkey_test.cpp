// A monkey at every dialog: seeded, so that what it finds can be found again.
#include "dialogs/catalogue.h"
#include "dialogs/embedding.h"
#include "platform/qt/file_dialog_testing.h"
#include "platform/qt/graphics_testing.h"
#include "platform/qt/window_testing.h"
#include "preview/preview_control.h"
#include "resources/resource.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/drive/drive.h"
#include "tests/support/dib_maker.h"
#include <zq/zqui.h>

#include <cstdlib>
#include <deque>
#include <iostream>
#include <iterator>
#include <memory>
#include <random>
#include <sstream>

// Only in programs with the address sanitizer.
extern "C" [[gnu::weak]] void __sanitizer_set_death_callback(void (*callback)());

namespace {

constexpr u32 kSeed = 20051;
constexpr int kShortRun = 20000; // events
constexpr int kLongRun = 200000;
constexpr int kEventsAtOnce = 25;
constexpr int kMostIdleTurns = 500;
constexpr std::size_t kLastEvents = 40;
constexpr i32 kBrowserRecordBytes = 16;
constexpr char kNoSuchFile[] = "no such folder/monkey";

std::mt19937 generator;
std::deque<std::string> journal;
int eventsLeft = 0; // for the open dialog
int turn = 0;
int idleTurns = 0;

int Random(int count) {
    return static_cast<int>(generator() % static_cast<u32>(count));
}

template <class List>
auto OneOf(const List& list) {
    return list[static_cast<std::size_t>(Random(static_cast<int>(std::size(list))))];
}

void Note(const std::string& text) {
    journal.push_back(text);
    if (journal.size() > kLastEvents) {
        journal.pop_front();
    }
}

void PrintJournal() {
    std::cerr << "The monkey's seed is " << kSeed << "; its last events:\n";
    for (const std::string& event : journal) {
        std::cerr << "  " << event << '\n';
    }
}

bool EndsDialog(int id) {
    return id == IDOK || id == IDCANCEL;
}

// The open dialogs and what is in them, without OK and Cancel.
std::vector<HWND> WindowsOf(HWND dialog) {
    std::vector<HWND> windows = {dialog};
    for (HWND root : {dialog, embeddedDialog}) {
        for (int id = IDC_FIRST_CELL - 40; root != nullptr && id <= IDC_EFFECT_LIST; ++id) {
            if (const HWND item = GetDlgItem(root, id)) {
                windows.push_back(item);
            }
        }
        for (int id : {kBeforePaneId, kAfterPaneId}) {
            const HWND pane = root != nullptr ? GetDlgItem(root, id) : nullptr;
            if (const PreviewControl* control = PreviewControlOf(pane)) {
                windows.push_back(control->imageWindow);
                windows.push_back(GetDlgItem(pane, kZoomInId));
                windows.push_back(GetDlgItem(pane, kZoomOutId));
            }
        }
    }
    std::erase(windows, nullptr);
    return windows;
}

std::string NameOf(HWND window) {
    char name[32] = "";
    GetClassNameA(window, name, sizeof(name));
    return std::string(name) + ' ' + std::to_string(GetDlgCtrlID(window));
}

void Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    std::ostringstream text;
    text << NameOf(window) << ": message " << message << ", " << wParam << ", " << lParam;
    Note(text.str());
    SendMessageA(window, message, wParam, lParam);
}

LPARAM RandomPlace(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return MAKELPARAM(Random(client.right + 40) - 20, Random(client.bottom + 40) - 20);
}

// A dialog and one of its windows.
using Act = void (*)(HWND dialog, HWND window);

void ScrollAnything(HWND dialog, HWND window) {
    Send(dialog, WM_HSCROLL, MAKEWPARAM(Random(10), Random(0x10000)),
         reinterpret_cast<LPARAM>(window));
}

void CommandAnything(HWND dialog, HWND window) {
    const UINT codes[] = {BN_CLICKED,   CBN_SELCHANGE, EN_SETFOCUS,
                          EN_KILLFOCUS, EN_CHANGE,     static_cast<UINT>(Random(0x10000))};
    const int id = Random(4) == 0 ? Random(0x10000) : GetDlgCtrlID(window);
    if (!EndsDialog(id)) {
        Send(dialog, WM_COMMAND, MAKEWPARAM(id, OneOf(codes)), reinterpret_cast<LPARAM>(window));
    }
}

// The browser's own timer has run out before anything can be done.
void TickAnything(HWND, HWND window) {
    const UINT_PTR timers[] = {0, 1, 2, kPreviewTimer};
    if (window != browserWindow) {
        Send(window, WM_TIMER, OneOf(timers), 0);
    }
}

void MouseAnything(HWND, HWND window) {
    const UINT messages[] = {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP, WM_LBUTTONDBLCLK};
    Send(window, OneOf(messages), Random(2) == 0 ? MK_LBUTTON : 0, RandomPlace(window));
}

void PressAnything(HWND, HWND window) {
    if (IsWindowEnabled(window)) {
        Send(window, BM_CLICK, 0, 0);
    }
}

void AnnounceAgain(HWND, HWND window) {
    if (GetDlgCtrlID(window) == kAfterPaneId && PreviewControlOf(window)->params != nullptr) {
        Send(window, kParamsChangedMessage, 0,
             reinterpret_cast<LPARAM>(PreviewControlOf(window)->params));
    }
}

void WriteAnything(HWND, HWND window) {
    const char* texts[] = {"", "0", "-1", "-", "7 7", "99999999999", "-2147483648", "abc"};
    if (NameOf(window).starts_with("Edit")) {
        const char* text = OneOf(texts);
        Note(NameOf(window) + ": text " + text);
        SetWindowTextA(window, text);
    }
}

void SelectAnything(HWND dialog, HWND) {
    for (int id : {IDC_EFFECT_LIST, IDC_CURVE_PRESET}) {
        if (const HWND list = GetDlgItem(dialog, id)) {
            Send(list, CB_SETCURSEL, static_cast<WPARAM>(Random(32) - 1), 0);
            Send(dialog, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
            return;
        }
    }
}

// With real events from here on.
void ClickAnything(HWND, HWND window) {
    if (IsWindowVisible(window) && IsWindowEnabled(window)) {
        RECT client{};
        GetClientRect(window, &client);
        const POINT place{Random(client.right + 1), Random(client.bottom + 1)};
        Note(NameOf(window) + ": click");
        PressMouse(window, place);
        if (IsWindow(window) && Random(3) == 0) {
            DragMouse(window, {Random(client.right + 20), Random(client.bottom + 20)});
        }
        if (IsWindow(window)) {
            ReleaseMouse(window, place);
        }
    }
}

void TypeAnything(HWND, HWND) {
    const int keys[] = {kKeyTab, kKeyLeft,   kKeyRight,  kKeyUp,    kKeyDown,    kKeyHome,
                        kKeyEnd, kKeyPageUp, kKeyDelete, kKeySpace, kKeyPageDown};
    const int key = OneOf(keys);
    Note("key " + std::to_string(key));
    TypeKey(key);
}

void TypeMnemonic(HWND, HWND) {
    const int keys[] = {'A', 'L', 'P', 'R', 'S'};
    const int key = OneOf(keys);
    Note("mnemonic " + std::to_string(key));
    TypeKey(key, kAlt);
}

void EndAnyway(HWND dialog, HWND) {
    const Act ways[] = {
        [](HWND window, HWND) { PressOk(window); },
        [](HWND window, HWND) { PressCancel(window); },
        [](HWND window, HWND) { PressCloseBox(window); },
        [](HWND, HWND) { TypeKey(kKeyEnter); },
        [](HWND, HWND) { TypeKey(kKeyEscape); },
    };
    const int way = Random(static_cast<int>(std::size(ways)));
    Note("end, way " + std::to_string(way));
    ways[way](dialog, nullptr);
}

constexpr Act kActs[] = {ScrollAnything, CommandAnything, TickAnything,  MouseAnything,
                         MouseAnything,  PressAnything,   AnnounceAgain, WriteAnything,
                         SelectAnything, ClickAnything,   TypeAnything,  TypeMnemonic};

void PlayOnce(HWND dialog, const std::vector<HWND>& windows) {
    AnswerNextFileDialog(Random(2) == 0 ? "" : kNoSuchFile);
    const HWND window = OneOf(windows);
    const bool embedded = embeddedDialog != nullptr && Random(4) != 0;
    const Act act = eventsLeft <= 0 || Random(1000) == 0 ? EndAnyway : OneOf(kActs);
    --eventsLeft;
    if (IsWindow(window)) {
        act(embedded && act != EndAnyway && act != SelectAnything ? embeddedDialog : dialog,
            window);
    }
}

// The next events, from whichever dialog's loop runs now.
void CALLBACK Play(HWND, UINT, UINT_PTR, DWORD) {
    const HWND dialog = browserWindow != nullptr ? browserWindow : FindWindowA("#32770", nullptr);
    const bool shown = dialog != nullptr && IsWindowVisible(dialog) != 0;
    if (!shown || (dialog == browserWindow && embeddedDialog == nullptr)) {
        if (++idleTurns > kMostIdleTurns) {
            std::cerr << "No dialog comes up or ends.\n";
            PrintJournal();
            std::abort();
        }
        return;
    }
    idleTurns = 0;
    const int thisTurn = ++turn;
    const std::vector<HWND> windows = WindowsOf(dialog);
    for (int i = 0; i < kEventsAtOnce && thisTurn == turn && IsWindow(dialog); ++i) {
        PlayOnce(dialog, windows);
    }
}

std::unique_ptr<TestDocument> RandomDocument() {
    const bool tiny = Random(5) == 0;
    const i32 width = tiny ? 1 : 1 + Random(90);
    const i32 height = tiny ? 1 : 1 + Random(90);
    const bool grey = Random(4) == 0;
    auto document = std::make_unique<TestDocument>(
        width, height, grey ? ImageClass::Grey : ImageClass::Colour, 1, generator());
    if (!grey && Random(3) == 0) {
        const ImageClass kinds[] = {ImageClass::Palette8, ImageClass::Palette4, ImageClass::Mono};
        document->SetImage(0, MakeDib(OneOf(kinds), width, height));
    }
    if (Random(3) == 0) {
        document->SetMask(0, {});
    }
    return document;
}

// A buffer with words behind the record that must stay.
void VisitDialog() {
    const auto document = RandomDocument();
    const UnchangedGuard unchanged(document->Handle());
    const UnchangedGuard unchangedImage(document->Layer(0).image);
    const std::span<const EffectRow> effects = EffectCatalogue();
    const std::size_t row = static_cast<std::size_t>(Random(static_cast<int>(effects.size()) + 6));
    CallerBuffer buffer;
    std::size_t recordBytes = kBrowserRecordBytes;
    i32 result = 0;
    if (row < effects.size()) {
        Note(std::string("dialog ") + effects[row].title);
        recordBytes = effects[row].recordBytes;
        result = GetZQParam(effects[row].id, nullptr, document->Handle(), buffer.words.data());
    } else {
        const i32 sizes[] = {-1, 0, 8, 16, 300};
        Note("browser");
        i32 effect = 0;
        result = GetZQBrowserParam(nullptr, document->Handle(), &effect, buffer.words.data(),
                                   OneOf(sizes));
        EXPECT_NE(FindEffectRow(effect), nullptr);
    }
    EXPECT_TRUE(result == 0 || result == 1) << result;
    for (std::size_t i = (recordBytes + 3) / 4; i < buffer.words.size(); ++i) {
        EXPECT_EQ(buffer.words[i], kUntouched) << "word " << i << " behind the record";
    }
}

class Monkey : public DialogTest {
protected:
    Monkey() {
        generator.seed(kSeed);
        if (__sanitizer_set_death_callback != nullptr) {
            __sanitizer_set_death_callback(PrintJournal);
        }
    }
    ~Monkey() override {
        if (__sanitizer_set_death_callback != nullptr) {
            __sanitizer_set_death_callback(nullptr);
        }
    }
};

TEST_F(Monkey, BreaksNothingAndLeavesNothingBehind) {
    const std::size_t drawingObjects = LiveGdiObjectCount();
    const int events = std::getenv("ZQ_LONG") != nullptr ? kLongRun : kShortRun;
    const UINT_PTR timer = SetTimer(nullptr, 0, 1, Play);
    for (int done = 0; done < events && !HasFailure();) {
        const LeakGuard guard;
        const int planned = eventsLeft = 200 + Random(200);
        VisitDialog();
        RunPending();
        done += planned - eventsLeft;
        EXPECT_EQ(LiveWindowCount(), 0u);
        EXPECT_EQ(LiveTimerCount(), 1u); // the monkey's own
    }
    KillTimer(nullptr, timer);
    EXPECT_EQ(LiveGdiObjectCount(), drawingObjects);
    if (HasFailure()) {
        PrintJournal();
    }
}

} // namespace

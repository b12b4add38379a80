#include "tests/platform/qt/drive.h"

#include <QScreen>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const LPCSTR kEveryKind = MAKEINTRESOURCEA(100);
const LPCSTR kInner = MAKEINTRESOURCEA(101);
const LPCSTR kUnknownClass = MAKEINTRESOURCEA(102);
constexpr int kBar = 201;
constexpr int kSquare = 220;

std::vector<std::string> order;
std::function<INT_PTR(HWND, UINT, WPARAM, LPARAM)> listener;

INT_PTR EndByButtons(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
        EndDialog(dialog, LOWORD(wParam) + 40);
        return 1;
    }
    return message == WM_INITDIALOG;
}

// Asks the test first, then ends by its buttons.
INT_PTR Listen(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    const INT_PTR handled = listener ? listener(dialog, message, wParam, lParam) : 0;
    return handled != 0 || !IsWindow(dialog) ? handled
                                             : EndByButtons(dialog, message, wParam, lParam);
}

INT_PTR RunDialog(LPCSTR name, HWND parent, DLGPROC procedure, LPARAM param = 0) {
    const INT_PTR result = DialogBoxParamA(TestModule(), name, parent, procedure, param);
    order.push_back(std::to_string(result));
    return result;
}

// Runs an action from the event loop of the dialog that is opened next.
void Soon(void (*action)(HWND dialog)) {
    static void (*waiting)(HWND);
    waiting = action;
    RunSoon([] { waiting(GetActiveWindow()); });
}

class ADialog : public testing::Test {
protected:
    ADialog() { order.clear(); }
    ~ADialog() override {
        listener = nullptr;
        RunPending();
        EXPECT_EQ(LiveWindowCount(), 0u);
        EXPECT_EQ(LiveTimerCount(), 0u);
        EXPECT_EQ(GetActiveWindow(), nullptr);
    }
};

// A window of the host that notes when Qt blocks it.
class HostWindow : public QWidget {
public:
    std::vector<QEvent::Type> blocks;

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::WindowBlocked || event->type() == QEvent::WindowUnblocked) {
            blocks.push_back(event->type());
        }
        return QWidget::event(event);
    }
};

} // namespace

TEST_F(ADialog, GivesTheValueThatEndedIt) {
    const struct {
        void (*action)(HWND);
        INT_PTR result;
    } kTable[] = {
        {[](HWND dialog) {
             ClickMouse(GetDlgItem(dialog, IDOK), {5, 5});
         },
         41},
        {[](HWND) { TypeKey(Qt::Key_Return); }, 41},
        {[](HWND) { TypeKey(Qt::Key_Escape); }, 42},
        {[](HWND dialog) { SendMessageA(dialog, WM_CLOSE, 0, 0); }, 42},
        {[](HWND dialog) { WidgetForTest(dialog)->close(); }, 42},
        {[](HWND dialog) { SendDlgItemMessageA(dialog, IDCANCEL, BM_CLICK, 0, 0); }, 42},
        {[](HWND dialog) { EndDialog(dialog, -7); }, -7},
        {[](HWND dialog) {
             EndDialog(dialog, 5);
             DestroyWindow(dialog);
         },
         5},
        {[](HWND dialog) { DestroyWindow(dialog); }, -1},
    };
    for (const auto& row : kTable) {
        Soon(row.action);
        EXPECT_EQ(RunDialog(kEveryKind, nullptr, EndByButtons), row.result) << &row - kTable;
    }
}

TEST_F(ADialog, MayEndBeforeItIsShown) {
    listener = [](HWND dialog, UINT message, WPARAM, LPARAM) {
        return message == WM_INITDIALOG ? INT_PTR{EndDialog(dialog, 9)} : 0;
    };
    EXPECT_EQ(RunDialog(kEveryKind, nullptr, Listen), 9);
    listener = [](HWND dialog, UINT message, WPARAM, LPARAM) {
        return message == WM_INITDIALOG ? INT_PTR{DestroyWindow(dialog)} : 0;
    };
    EXPECT_EQ(RunDialog(kEveryKind, nullptr, Listen), -1);
}

TEST_F(ADialog, ThatCannotBeMadeSaysSo) {
    EXPECT_EQ(RunDialog(MAKEINTRESOURCEA(999), nullptr, EndByButtons), -1);
    EXPECT_EQ(RunDialog(kUnknownClass, nullptr, EndByButtons), -1);
    EXPECT_EQ(RunDialog("name", nullptr, EndByButtons), -1);
    EXPECT_EQ(DialogBoxParamA(nullptr, kEveryKind, nullptr, EndByButtons, 0), -1);
    const auto stale = reinterpret_cast<HWND>((std::uintptr_t{1} << 63) | 0x70007);
    EXPECT_EQ(RunDialog(kEveryKind, stale, EndByButtons), 0);
}

TEST_F(ADialog, IsInitialisedWithItsParameterAndFirstTabStop) {
    for (const bool systemSetsFocus : {true, false}) {
        listener = [systemSetsFocus](HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
            if (message == WM_INITDIALOG) {
                EXPECT_EQ(reinterpret_cast<HWND>(wParam), GetDlgItem(dialog, kBar));
                EXPECT_EQ(lParam, 1234);
                EXPECT_FALSE(IsWindowVisible(dialog));
                SetFocus(GetDlgItem(dialog, kSquare));
                PostMessageA(dialog, WM_USER, systemSetsFocus, 0);
                return INT_PTR{systemSetsFocus};
            }
            if (message == WM_USER) {
                EXPECT_TRUE(IsWindowVisible(dialog));
                EXPECT_EQ(GetDlgCtrlID(GetFocus()), wParam != 0 ? kBar : kSquare);
                EndDialog(dialog, 1);
            }
            // What the default of WM_INITDIALOG would answer does not count here.
            return INT_PTR{message == WM_USER};
        };
        const auto procedure = [](HWND dialog, UINT message, WPARAM wParam,
                                  LPARAM lParam) -> INT_PTR {
            return listener(dialog, message, wParam, lParam);
        };
        EXPECT_EQ(RunDialog(kEveryKind, nullptr, procedure, 1234), 1);
    }
}

TEST_F(ADialog, IsLaidOutInDialogUnitsInTheMiddleOfTheScreen) {
    Soon([](HWND dialog) {
        const QWidget* widget = WidgetForTest(dialog);
        EXPECT_EQ(widget->size(), QSize(300, 200));
        EXPECT_EQ(widget->windowTitle(), "Every kind");
        const QPoint middle = widget->screen()->availableGeometry().center();
        EXPECT_LE((widget->geometry().center() - middle).manhattanLength(), 2);
        EXPECT_EQ(WidgetForTest(GetDlgItem(dialog, kBar))->geometry(), QRect(80, 20, 120, 18));
        EXPECT_NE(SendMessageA(dialog, WM_GETFONT, 0, 0), 0);
        EndDialog(dialog, 1);
    });
    EXPECT_EQ(RunDialog(kEveryKind, nullptr, EndByButtons), 1);
}

TEST_F(ADialog, AnswersMessagesWithItsResultWord) {
    listener = [](HWND dialog, UINT message, WPARAM, LPARAM) {
        if (message != WM_USER) {
            return INT_PTR{0};
        }
        SetWindowLongPtrA(dialog, DWLP_MSGRESULT, 77);
        return INT_PTR{1};
    };
    Soon([](HWND dialog) {
        EXPECT_EQ(SendMessageA(dialog, WM_USER, 0, 0), 77);
        EXPECT_EQ(SendMessageA(dialog, WM_USER + 1, 0, 0), 0);
        EndDialog(dialog, 1);
    });
    EXPECT_EQ(RunDialog(kEveryKind, nullptr, Listen), 1);
}

TEST_F(ADialog, DisablesItsOwnerWhileItRuns) {
    Soon([](HWND outer) {
        Soon([](HWND inner) {
            const HWND owner = GetParent(inner);
            EXPECT_FALSE(IsWindowEnabled(owner));
            EXPECT_TRUE(WidgetForTest(GetDlgItem(owner, IDOK))->isEnabled()); // no grey looks
            ClickMouse(GetDlgItem(owner, IDOK), {5, 5});
            WidgetForTest(owner)->close();
            RunPending();
            EXPECT_TRUE(IsWindow(inner));
            EndDialog(inner, 3);
            EXPECT_TRUE(IsWindowEnabled(owner));
            EXPECT_FALSE(IsWindowVisible(inner));
        });
        EXPECT_EQ(RunDialog(kInner, outer, EndByButtons), 3);
        ClickMouse(GetDlgItem(outer, IDOK), {5, 5});
    });
    EXPECT_EQ(RunDialog(kEveryKind, nullptr, EndByButtons), 41);
}

TEST_F(ADialog, BlocksAWindowOfTheHostThatOwnsIt) {
    KillTimer(nullptr, SetTimer(nullptr, 0, 1, nullptr)); // brings the application up
    HostWindow host;
    host.show();
    const auto id = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(host.winId()));
    static HWND parent;
    Soon([](HWND dialog) {
        parent = GetParent(dialog);
        TypeKey(Qt::Key_Escape);
    });
    EXPECT_EQ(RunDialog(kEveryKind, id, EndByButtons), 42);
    EXPECT_EQ(parent, id);
    const std::vector<QEvent::Type> expected = {QEvent::WindowBlocked, QEvent::WindowUnblocked};
    EXPECT_EQ(host.blocks, expected);
    EXPECT_TRUE(host.isEnabled());
}

TEST_F(ADialog, EndsInnermostFirst) {
    Soon([](HWND) {
        Soon([](HWND) {
            Soon([](HWND inner) {
                EndDialog(FindWindowA(nullptr, "Every kind"), 1);
                EXPECT_EQ(order, std::vector<std::string>{});
                EndDialog(inner, 3);
            });
            RunDialog(kInner, nullptr, EndByButtons);
            EXPECT_EQ(order, std::vector<std::string>{"3"});
            EndDialog(GetActiveWindow(), 2);
        });
        RunDialog(kInner, nullptr, EndByButtons);
    });
    RunDialog(kEveryKind, nullptr, EndByButtons);
    const std::vector<std::string> expected = {"3", "2", "1"};
    EXPECT_EQ(order, expected);
}

TEST_F(ADialog, MayLiveInsideAnotherAndBeReplacedThere) {
    static HWND embedded;
    // Becomes a child of the outer dialog before it is shown.
    listener = [](HWND dialog, UINT message, WPARAM, LPARAM) {
        if (message == WM_INITDIALOG) {
            const HWND outer = FindWindowA(nullptr, "Every kind");
            SetWindowLongPtrA(dialog, GWL_STYLE, WS_CHILD);
            SetParent(dialog, outer);
            SetWindowPos(dialog, nullptr, 10, 20, 100, 50, SWP_NOZORDER);
            ShowWindow(dialog, SW_SHOW);
            embedded = dialog;
        }
        return INT_PTR{0};
    };
    Soon([](HWND) {
        RunSoon([] {
            EXPECT_EQ(GetParent(embedded), FindWindowA(nullptr, "Every kind"));
            EXPECT_EQ(GetActiveWindow(), GetParent(embedded));
            EXPECT_EQ(GetParent(GetFocus()), embedded);
            const HWND replaced = embedded;
            SendMessageA(replaced, WM_COMMAND, IDCANCEL, 0);
            DestroyWindow(replaced);
            RunSoon([] {
                const HWND outer = GetParent(embedded);
                SendMessageA(embedded, WM_COMMAND, IDOK, 0);
                ClickMouse(GetDlgItem(outer, IDOK), {5, 5});
            });
            RunDialog(kInner, nullptr, Listen);
        });
        RunDialog(kInner, nullptr, Listen);
    });
    RunDialog(kEveryKind, nullptr, EndByButtons);
    const std::vector<std::string> expected = {"41", "42", "41"};
    EXPECT_EQ(order, expected);
}

TEST_F(ADialog, MayVanishWhileAHandlerOfItsControlRunsAnother) {
    listener = [](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_HSCROLL && LOWORD(wParam) == SB_LINEUP) {
            Soon([](HWND inner) {
                DestroyWindow(FindWindowA(nullptr, "Every kind"));
                RunPending();
                EndDialog(inner, 2);
            });
            RunDialog(kInner, nullptr, EndByButtons);
            EXPECT_FALSE(IsWindow(dialog));
        }
        return INT_PTR{message == WM_HSCROLL};
    };
    Soon([](HWND dialog) { ClickMouse(GetDlgItem(dialog, kBar), {3, 9}); });
    EXPECT_EQ(RunDialog(kEveryKind, nullptr, Listen), -1);
    EXPECT_EQ(order.front(), "2");
}

TEST_F(ADialog, IsCancelledWhenTheApplicationQuits) {
    static void (*quit)();
    static DLGPROC innerProcedure;
    const auto run = [](void (*how)(), DLGPROC procedure) {
        quit = how;
        innerProcedure = procedure;
        order.clear();
        SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR id, DWORD) {
            KillTimer(nullptr, id);
            Soon([](HWND) {
                Soon([](HWND) { quit(); });
                RunDialog(kInner, nullptr, innerProcedure);
            });
            RunDialog(kEveryKind, nullptr, EndByButtons);
        });
        QApplication::exec();
        return order;
    };
    using Results = std::vector<std::string>;
    EXPECT_EQ(run([] { QCoreApplication::quit(); }, EndByButtons), (Results{"42", "42"}));
    // One that does not even listen to that.
    const auto deaf = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return 0; };
    EXPECT_EQ(run([] { QCoreApplication::exit(); }, deaf), (Results{"-1", "42"}));
}

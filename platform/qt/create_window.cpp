#include "platform/qt/create_window.h"

#include "platform/qt/application.h"
#include "platform/qt/control.h"
#include "platform/qt/dialog.h"
#include "platform/qt/geometry.h"
#include "platform/qt/graphics.h"
#include "platform/qt/look.h"
#include "platform/qt/modal_loop.h"
#include "platform/qt/mouse.h"
#include "platform/qt/paint.h"
#include "platform/qt/parent.h"
#include "platform/qt/timer.h"
#include "platform/qt/window_class.h"
#include "platform/qt/window_widget.h"

namespace {

// What the class decides about a new window; the cursor is null for the system's own classes.
bool TakeClass(Window& window, const std::string& name, HCURSOR& cursor) {
    if (SameClassName(name, kDialogClassName)) {
        window.kind = WindowKind::Dialog;
        window.className = kDialogClassName;
        window.procedure = DialogClassProc;
        window.extra.resize(3 * sizeof(LONG_PTR));
        return true;
    }
    if (const ControlKind* control = FindControlKind(name, window.style)) {
        window.kind = WindowKind::Control;
        window.className = control->className;
        window.procedure = control->procedure;
        window.control = control;
        return true;
    }
    const WindowClass* windowClass = FindWindowClass(name);
    if (windowClass == nullptr) {
        return false;
    }
    window.className = windowClass->name;
    window.procedure = windowClass->procedure;
    window.classStyle = windowClass->style;
    window.background = windowClass->background;
    window.extra.resize(static_cast<std::size_t>(windowClass->extraBytes));
    cursor = windowClass->cursor;
    return true;
}

QWidget* MakeWidget(const Window& window, QWidget* parent) {
    if (window.kind == WindowKind::Control) {
        return window.control->make(window, parent);
    }
    return new WindowWidget(window, parent);
}

void Describe(Window& window, const WindowParams& params) {
    window.parent = params.parent;
    window.id = params.id;
    window.style = params.style & ~WS_VISIBLE; // until it is shown
    window.exStyle = params.exStyle;
    window.instance = params.instance;
    window.text = params.text;
}

bool Announce(HWND handle, const WindowParams& params) {
    CREATESTRUCTA create{};
    create.lpCreateParams = params.createParams;
    create.hInstance = params.instance;
    create.hMenu = reinterpret_cast<HMENU>(static_cast<std::intptr_t>(params.id));
    create.hwndParent = params.parent;
    create.cx = params.width;
    create.cy = params.height;
    create.x = params.x;
    create.y = params.y;
    create.style = static_cast<LONG>(params.style);
    create.lpszName = params.text.c_str();
    create.lpszClass = params.className.c_str();
    create.dwExStyle = params.exStyle;
    const auto argument = reinterpret_cast<LPARAM>(&create);
    if (SendMessageA(handle, WM_NCCREATE, 0, argument) == 0) {
        RemoveWindow(handle);
        return false;
    }
    if (SendMessageA(handle, WM_CREATE, 0, argument) == -1) {
        DestroyWindow(handle);
    }
    return IsWindow(handle) != 0;
}

// The window first, then what it holds.
void SendDestroy(HWND handle) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr || window->destroying) {
        return;
    }
    window->destroying = true;
    SendMessageA(handle, WM_DESTROY, 0, 0);
    window = FindWindowOf(handle);
    const auto children = window == nullptr ? std::vector<HWND>{} : window->children;
    for (HWND child : children) {
        SendDestroy(child);
    }
}

void FreeWindow(HWND handle) {
    const Window* window = FindWindowOf(handle);
    if (window == nullptr) {
        return;
    }
    const auto children = window->children;
    for (HWND child : children) {
        FreeWindow(child);
    }
    SendMessageA(handle, WM_NCDESTROY, 0, 0);
    if (!IsWindow(handle)) {
        return;
    }
    TakeFromParent(handle);
    KillTimersOf(handle);
    ForgetCapture(handle);
    ClosePaint(handle);
    LeaveModalLoop(handle);
    RemoveWindow(handle);
}

void DestroyOwnedBy(HWND owner) {
    for (HWND handle : AllWindows()) {
        const Window* window = FindWindowOf(handle);
        if (window != nullptr && !window->IsChild() && window->parent == owner) {
            DestroyWindow(handle);
        }
    }
}

} // namespace

HWND MakeWindow(const WindowParams& params) {
    if (!EnsureApplication()) {
        return nullptr;
    }
    const bool child = (params.style & WS_CHILD) != 0;
    const Window* parent = FindWindowOf(params.parent);
    if (parent == nullptr && (child || IsWindowHandle(params.parent))) {
        return nullptr;
    }
    QWidget* parentWidget = child ? parent->widget.data() : nullptr;
    if (child && (parentWidget == nullptr || parent->destroying)) {
        return nullptr;
    }
    Window* window = AddWindow();
    if (window == nullptr) {
        return nullptr;
    }
    const HWND handle = window->handle;
    HCURSOR cursor = nullptr;
    Describe(*window, params);
    if (!TakeClass(*window, params.className, cursor)) {
        RemoveWindow(handle);
        return nullptr;
    }
    QWidget* widget = MakeWidget(*window, parentWidget);
    SetWindowWidget(*window, widget);
    ApplyLook(*widget);
    if (cursor != nullptr) {
        widget->setCursor(CursorOfHandle(cursor));
    }
    if (child) {
        AddToParent(handle);
        widget->setEnabled((params.style & WS_DISABLED) == 0);
    } else {
        widget->setWindowTitle(ToQString(params.text));
    }
    PlaceWindow(*window, {params.x, params.y, params.width, params.height});
    ResizeSurface(*window);
    if (!Announce(handle, params)) {
        return nullptr;
    }
    // Whoever runs a dialog shows it.
    const bool dialog = FindWindowOf(handle)->kind == WindowKind::Dialog;
    const bool shown = (params.style & WS_VISIBLE) != 0 && !dialog;
    if (!dialog) {
        SendSize(handle);
    }
    ShowWindow(handle, shown ? SW_SHOW : SW_HIDE);
    return IsWindow(handle) ? handle : nullptr;
}

extern "C" {

HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, int x, int y,
                     int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                     LPVOID param) {
    if (reinterpret_cast<std::uintptr_t>(className) <= 0xFFFF) {
        return nullptr;
    }
    const auto id = static_cast<int>(reinterpret_cast<std::intptr_t>(menu));
    return MakeWindow({className, windowName == nullptr ? "" : windowName, style, exStyle, x, y,
                       width, height, parent, id, instance, param});
}

BOOL DestroyWindow(HWND handle) {
    const Window* window = FindWindowOf(handle);
    if (window == nullptr || window->destroying) {
        return 0;
    }
    if (!window->IsChild()) {
        DestroyOwnedBy(handle);
    }
    if (QWidget* widget = WidgetOf(handle)) {
        widget->hide();
    }
    SendDestroy(handle);
    FreeWindow(handle);
    return 1;
}

} // extern "C"

#include "platform/qt/window.h"

#include "platform/qt/application.h"
#include "platform/qt/handle_table.h"
#include "platform/qt/modal_loop.h"
#include "platform/qt/window_testing.h"
#include "platform/types.h"

#include <QApplication>

#include <algorithm>
#include <memory>
#include <unordered_map>

namespace {

// No native window id is that large.
constexpr std::uintptr_t kWindowMark = std::uintptr_t{1} << 63;
static_assert(sizeof(std::uintptr_t) == 8);

// Never freed: windows may be asked for while the process ends.
struct Table {
    HandleTable<std::unique_ptr<Window>> windows;
    std::vector<HWND> inOrder;
    std::unordered_map<const QWidget*, HWND> byWidget;
};

Table& Windows() {
    static auto& table = *new Table;
    return table;
}

std::uintptr_t TableHandle(HWND handle) {
    return reinterpret_cast<std::uintptr_t>(handle) & ~kWindowMark;
}

} // namespace

bool IsWindowHandle(HWND handle) {
    return (reinterpret_cast<std::uintptr_t>(handle) & kWindowMark) != 0;
}

Window* FindWindowOf(HWND handle) {
    if (!IsWindowHandle(handle) || !OnGuiThread()) {
        return nullptr;
    }
    auto* found = Windows().windows.Find(TableHandle(handle));
    return found == nullptr ? nullptr : found->get();
}

std::vector<HWND> AllWindows() {
    return OnGuiThread() ? Windows().inOrder : std::vector<HWND>{};
}

QWidget* WidgetOf(HWND handle) {
    const Window* window = FindWindowOf(handle);
    return window == nullptr ? nullptr : window->widget.data();
}

HWND WindowOfWidget(const QWidget* widget) {
    const auto& byWidget = Windows().byWidget;
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const auto found = byWidget.find(widget);
        if (found != byWidget.end()) {
            return found->second;
        }
    }
    return nullptr;
}

HWND TopLevelOf(HWND handle) {
    const Window* window = FindWindowOf(handle);
    while (window != nullptr && window->IsChild()) {
        window = FindWindowOf(window->parent);
    }
    return window == nullptr ? nullptr : window->handle;
}

HWND DialogOf(HWND handle) {
    const Window* window = FindWindowOf(handle);
    while (window != nullptr && window->kind != WindowKind::Dialog) {
        window = window->IsChild() ? FindWindowOf(window->parent) : nullptr;
    }
    return window == nullptr ? nullptr : window->handle;
}

Window* AddWindow() {
    auto made = std::make_unique<Window>();
    Window* window = made.get();
    const std::uintptr_t handle = Windows().windows.Add(std::move(made));
    if (handle == 0) {
        return nullptr;
    }
    window->handle = reinterpret_cast<HWND>(handle | kWindowMark);
    Windows().inOrder.push_back(window->handle);
    return window;
}

void SetWindowWidget(Window& window, QWidget* widget) {
    window.widget = widget;
    Windows().byWidget[widget] = window.handle;
    // The application takes all widgets away when it ends.
    QObject::connect(widget, &QObject::destroyed, [handle = window.handle, widget] {
        DestroyWindow(handle);
        Windows().byWidget.erase(widget);
    });
}

void RemoveWindow(HWND handle) {
    Window* window = FindWindowOf(handle);
    if (window == nullptr) {
        return;
    }
    if (QWidget* widget = window->widget) {
        Windows().byWidget.erase(widget);
        widget->blockSignals(true); // `destroyed` still comes: Qt's accessibility waits for it
        widget->hide();
        DeleteWhenIdle(widget);
    }
    std::erase(Windows().inOrder, handle);
    Windows().windows.Remove(TableHandle(handle));
}

QString ToQString(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

std::size_t LiveWindowCount() {
    return Windows().windows.Count();
}

std::size_t LiveWidgetCount() {
    return static_cast<std::size_t>(QApplication::allWidgets().size());
}

extern "C" BOOL IsWindow(HWND window) {
    return FindWindowOf(window) != nullptr;
}

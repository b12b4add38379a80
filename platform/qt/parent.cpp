#include "platform/qt/parent.h"

#include "platform/qt/window.h"

#include <algorithm>
#include <vector>

namespace {

bool LiesIn(HWND handle, HWND ancestor) {
    for (const Window* window = FindWindowOf(handle); window != nullptr;
         window = FindWindowOf(window->parent)) {
        if (window->handle == ancestor) {
            return true;
        }
    }
    return false;
}

// What stood on the desktop becomes part of another window.
void Embed(QWidget& widget, QWidget& parent, bool shown) {
    widget.setWindowModality(Qt::NonModal);
    widget.setMinimumSize(0, 0);
    widget.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    widget.setParent(&parent, Qt::Widget);
    widget.setVisible(shown);
}

} // namespace

void AddToParent(HWND handle) {
    if (Window* parent = FindWindowOf(FindWindowOf(handle)->parent)) {
        parent->children.push_back(handle);
    }
}

void TakeFromParent(HWND handle) {
    if (Window* parent = FindWindowOf(FindWindowOf(handle)->parent)) {
        std::erase(parent->children, handle);
    }
}

void MoveBehind(HWND handle, HWND sibling) {
    Window* parent = FindWindowOf(FindWindowOf(handle)->parent);
    if (parent == nullptr || handle == sibling) {
        return;
    }
    auto& children = parent->children;
    const auto at = std::ranges::find(children, sibling);
    if (sibling == nullptr || at != children.end()) {
        std::erase(children, handle);
        children.insert(sibling == nullptr ? children.begin()
                                           : std::next(std::ranges::find(children, sibling)),
                        handle);
    }
}

extern "C" {

HWND GetParent(HWND handle) {
    const Window* window = FindWindowOf(handle);
    return window == nullptr ? nullptr : window->parent;
}

HWND SetParent(HWND handle, HWND newParent) {
    Window* window = FindWindowOf(handle);
    QWidget* widget = WidgetOf(handle);
    QWidget* parentWidget = WidgetOf(newParent);
    if (widget == nullptr || parentWidget == nullptr || !window->IsChild() ||
        LiesIn(newParent, handle)) {
        return nullptr;
    }
    const HWND before = window->parent;
    TakeFromParent(handle);
    window->parent = newParent;
    AddToParent(handle);
    MoveBehind(handle, nullptr);
    Embed(*widget, *parentWidget, (window->style & WS_VISIBLE) != 0);
    return before;
}

} // extern "C"

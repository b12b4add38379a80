// Horizontal scroll bars. A bar never moves by itself: it tells its parent what the user did, and
// the parent sets the position.
#include "platform/qt/control.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int kThumbShare = 10; // of the range

int CodeOfAction(int action) {
    switch (action) {
    case QAbstractSlider::SliderSingleStepSub:
        return SB_LINEUP;
    case QAbstractSlider::SliderSingleStepAdd:
        return SB_LINEDOWN;
    case QAbstractSlider::SliderPageStepSub:
        return SB_PAGEUP;
    case QAbstractSlider::SliderPageStepAdd:
        return SB_PAGEDOWN;
    default:
        return -1;
    }
}

int CodeOfKey(int key) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return SB_LINEUP;
    case Qt::Key_Right:
    case Qt::Key_Down:
        return SB_LINEDOWN;
    case Qt::Key_PageUp:
        return SB_PAGEUP;
    case Qt::Key_PageDown:
        return SB_PAGEDOWN;
    case Qt::Key_Home:
        return SB_TOP;
    case Qt::Key_End:
        return SB_BOTTOM;
    default:
        return -1;
    }
}

class ScrollBar : public QScrollBar {
public:
    ScrollBar(HWND handle, QWidget* parent) : QScrollBar(Qt::Horizontal, parent), handle_(handle) {
        setTracking(false);
        setFocusPolicy(Qt::ClickFocus);
        setContextMenuPolicy(Qt::NoContextMenu);
        connect(this, &QAbstractSlider::actionTriggered, [this](int action) { Act(action); });
        connect(this, &QAbstractSlider::sliderMoved, [this](int place) { Track(place); });
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QScrollBar::paintEvent(event);
        if (hasFocus()) {
            QStyleOptionFocusRect focus;
            focus.initFrom(this);
            focus.rect = ThumbRect().adjusted(2, 2, -2, -2);
            QPainter painter(this);
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
        }
    }

    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton) {
            return;
        }
        held_ = true;
        mouse_ = event->position().toPoint();
        QScrollBar::mousePressEvent(event);
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        mouse_ = event->position().toPoint();
        QScrollBar::mouseMoveEvent(event);
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton || !held_) {
            return;
        }
        held_ = false;
        const bool dragged = isSliderDown();
        const int place = sliderPosition();
        QScrollBar::mouseReleaseEvent(event);
        const HWND handle = handle_;
        if (dragged) {
            Send(SB_THUMBPOSITION, place);
        }
        if (WidgetOf(handle) == this) {
            Send(SB_ENDSCROLL, 0);
        }
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }

    void wheelEvent(QWheelEvent* event) override { event->accept(); }

    void keyPressEvent(QKeyEvent* event) override {
        const int code = CodeOfKey(event->key());
        if (code < 0) {
            event->ignore();
            return;
        }
        const HWND handle = handle_;
        Send(code, 0);
        if (WidgetOf(handle) == this) {
            Send(SB_ENDSCROLL, 0);
        }
    }

private:
    // The position goes back to where the parent has put it before the parent hears of the action.
    void Act(int action) {
        setSliderPosition(value());
        const int code = CodeOfAction(action);
        if (code >= 0 && !ThumbIsUnderMouse(code)) {
            Send(code, 0);
        }
    }

    void Track(int place) {
        if (!telling_) {
            Send(SB_THUMBTRACK, place);
        }
    }

    // Pages turn until the thumb has come to the mouse.
    bool ThumbIsUnderMouse(int code) const {
        return held_ && (code == SB_PAGEUP || code == SB_PAGEDOWN) && ThumbRect().contains(mouse_);
    }

    QRect ThumbRect() const {
        QStyleOptionSlider option;
        initStyleOption(&option);
        return style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider,
                                       this);
    }

    void Send(int code, int place) {
        const Window* window = FindWindowOf(handle_);
        if (window == nullptr) {
            return;
        }
        const bool before = telling_;
        telling_ = true;
        SendMessageA(window->parent, WM_HSCROLL, MAKEWPARAM(code, place),
                     reinterpret_cast<LPARAM>(handle_));
        telling_ = before;
    }

    HWND handle_;
    QPoint mouse_;
    bool held_ = false;
    bool telling_ = false;
};

QWidget* Make(const Window& window, QWidget* parent) {
    return new ScrollBar(window.handle, parent);
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_GETDLGCODE ? DLGC_WANTARROWS
                                    : DefControlProc(handle, message, wParam, lParam);
}

ScrollBar* FindScrollBar(HWND handle, int bar) {
    const Window* window = FindWindowOf(handle);
    if (bar != SB_CTL || window == nullptr || window->control != &kScrollBar) {
        return nullptr;
    }
    return static_cast<ScrollBar*>(window->widget.data());
}

} // namespace

const ControlKind kScrollBar = {"ScrollBar", 0, 0, Make, nullptr, Procedure};

extern "C" {

BOOL SetScrollRange(HWND handle, int bar, int minimum, int maximum, BOOL) {
    ScrollBar* scrollBar = FindScrollBar(handle, bar);
    if (scrollBar == nullptr || minimum > maximum) {
        return 0;
    }
    scrollBar->setRange(minimum, maximum);
    const long long span = static_cast<long long>(maximum) - minimum;
    scrollBar->setPageStep(static_cast<int>(std::max(1LL, span / kThumbShare)));
    return 1;
}

BOOL GetScrollRange(HWND handle, int bar, int* minimum, int* maximum) {
    const ScrollBar* scrollBar = FindScrollBar(handle, bar);
    if (scrollBar == nullptr || minimum == nullptr || maximum == nullptr) {
        return 0;
    }
    *minimum = scrollBar->minimum();
    *maximum = scrollBar->maximum();
    return 1;
}

int SetScrollPos(HWND handle, int bar, int position, BOOL) {
    ScrollBar* scrollBar = FindScrollBar(handle, bar);
    if (scrollBar == nullptr) {
        return 0;
    }
    const int before = scrollBar->value();
    scrollBar->setValue(position);
    return before;
}

int GetScrollPos(HWND handle, int bar) {
    const ScrollBar* scrollBar = FindScrollBar(handle, bar);
    return scrollBar == nullptr ? 0 : scrollBar->value();
}

} // extern "C"

// Drop-down lists. The parent hears of a choice when it is committed, not while the list is open.
#include "platform/qt/control.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <utility>

namespace {

constexpr DWORD kTypeMask = 0x3;
constexpr int kMostVisibleItems = 30;
constexpr int kFrameHeight = 8; // above and below a line of text, together

class ComboBox : public QComboBox {
public:
    ComboBox(HWND handle, QWidget* parent) : QComboBox(parent), handle_(handle) {
        setFocusPolicy(Qt::StrongFocus);
        setMaxVisibleItems(kMostVisibleItems);
        connect(this, &QComboBox::activated, [this](int index) { Choose(index); });
    }

    int Add(const char* text) {
        const QSignalBlocker quiet(this);
        const int chosen = currentIndex();
        addItem(QString::fromLatin1(text));
        setCurrentIndex(chosen);
        return count() - 1;
    }

    int Select(int index) {
        chosen_ = index >= 0 && index < count() ? index : -1;
        setCurrentIndex(chosen_);
        return chosen_;
    }

    // The template's height is that of the open list; the closed one is as high as its text needs.
    void FitHeight() {
        setFixedHeight(fontMetrics().height() + kFrameHeight);
        resize(width(), minimumHeight());
    }

protected:
    void wheelEvent(QWheelEvent* event) override { event->accept(); }

private:
    void Choose(int index) {
        if (std::exchange(chosen_, index) != index) {
            NotifyParent(handle_, CBN_SELCHANGE);
        }
    }

    HWND handle_;
    int chosen_ = -1;
};

QWidget* Make(const Window& window, QWidget* parent) {
    auto* box = new ComboBox(window.handle, parent);
    box->FitHeight();
    return box;
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* box = static_cast<ComboBox*>(WidgetOf(handle));
    if (box == nullptr) {
        return DefControlProc(handle, message, wParam, lParam);
    }
    switch (message) {
    case CB_ADDSTRING:
        return lParam == 0 ? CB_ERR : box->Add(reinterpret_cast<const char*>(lParam));
    case CB_GETCURSEL:
        return box->currentIndex();
    case CB_SETCURSEL:
        return box->Select(static_cast<int>(wParam));
    case WM_SETTEXT:
        return CB_ERR;
    case WM_GETTEXT:
        FindWindowOf(handle)->text = box->currentText().toLatin1().toStdString();
        return DefControlProc(handle, message, wParam, lParam);
    case WM_SETFONT: {
        const LRESULT result = DefControlProc(handle, message, wParam, lParam);
        box->FitHeight();
        return result;
    }
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    default:
        return DefControlProc(handle, message, wParam, lParam);
    }
}

} // namespace

const ControlKind kDropDownList = {"ComboBox", kTypeMask, CBS_DROPDOWNLIST,
                                   Make,       nullptr,   Procedure};

// Push buttons that their parent draws.
#include "platform/qt/button_style.h"
#include "platform/qt/graphics.h"

#include <QPainter>

namespace {

class OwnerDrawnButton : public QAbstractButton {
public:
    OwnerDrawnButton(HWND handle, QWidget* parent) : QAbstractButton(parent), handle_(handle) {
        connect(this, &QAbstractButton::pressed, [this] { DrawChange(ODA_SELECT); });
        connect(this, &QAbstractButton::released, [this] { DrawChange(ODA_SELECT); });
    }

    // Lets the parent draw what has changed and shows it at once. Any other paint event means that
    // all of it is out of date.
    void DrawChange(UINT action) {
        if (isVisible()) {
            Draw(action);
            drawn_ = true;
            repaint();
            drawn_ = false;
        }
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (!drawn_ || surface_.size() != size()) {
            Draw(ODA_DRAWENTIRE);
        }
        QPainter(this).drawImage(0, 0, surface_);
    }

private:
    UINT State() const {
        return (isDown() ? ODS_SELECTED : 0) | (isEnabled() ? 0 : ODS_DISABLED) |
               (hasFocus() ? ODS_FOCUS : 0);
    }

    void Draw(UINT action) {
        const Window* window = FindWindowOf(handle_);
        if (window == nullptr || size().isEmpty()) {
            return;
        }
        if (surface_.size() != size()) {
            surface_ = QImage(size(), QImage::Format_RGB32);
            surface_.fill(SystemColor(COLOR_BTNFACE));
            action = ODA_DRAWENTIRE;
        }
        SendItem(*window, action);
    }

    void SendItem(const Window& window, UINT action) {
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_BUTTON;
        item.CtlID = static_cast<UINT>(window.id);
        item.itemAction = action;
        item.itemState = State();
        item.hwndItem = handle_;
        item.hDC = OpenDeviceContext(surface_, QRegion(surface_.rect()));
        item.rcItem = {0, 0, surface_.width(), surface_.height()};
        SendMessageA(window.parent, WM_DRAWITEM, static_cast<WPARAM>(window.id),
                     reinterpret_cast<LPARAM>(&item));
        CloseDeviceContext(item.hDC);
    }

    HWND handle_;
    QImage surface_;
    bool drawn_ = false; // and about to be shown
};

QWidget* Make(const Window& window, QWidget* parent) {
    auto* button = new OwnerDrawnButton(window.handle, parent);
    PrepareButton(window, *button);
    return button;
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
        if (auto* button = static_cast<OwnerDrawnButton*>(WidgetOf(handle))) {
            button->DrawChange(ODA_FOCUS);
        }
        return 0;
    }
    return DefButtonProc(handle, message, wParam, lParam);
}

} // namespace

const ControlKind kOwnerDrawnButton = {"Button", kButtonTypeMask, BS_OWNERDRAW,
                                       Make,     ShowButtonText,  Procedure};

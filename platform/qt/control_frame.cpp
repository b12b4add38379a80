// Empty frames around other controls.
#include "platform/qt/control.h"

#include <QPainter>
#include <qdrawutil.h>

namespace {

constexpr DWORD kTypeMask = 0x1F;

class EtchedFrame : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        qDrawShadeRect(&painter, rect(), palette(), true);
    }
};

QWidget* Make(const Window&, QWidget* parent) {
    auto* frame = new EtchedFrame(parent);
    frame->setAttribute(Qt::WA_TransparentForMouseEvents);
    frame->lower();
    return frame;
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_GETDLGCODE ? DLGC_STATIC : DefControlProc(handle, message, wParam, lParam);
}

} // namespace

const ControlKind kEtchedFrame = {"Static", kTypeMask, SS_ETCHEDFRAME, Make, nullptr, Procedure};

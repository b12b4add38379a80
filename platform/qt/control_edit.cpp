// Edits of one line.
#include "platform/qt/control.h"

#include <QApplication>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr DWORD kAlignmentMask = 0x3;

auto CountOthersThanDigits(const QString& text) {
    return std::ranges::count_if(text, [](QChar letter) { return letter < '0' || letter > '9'; });
}

Qt::Alignment AlignmentOf(DWORD style) {
    switch (style & kAlignmentMask) {
    case ES_CENTER:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case ES_RIGHT:
        return Qt::AlignRight | Qt::AlignVCenter;
    default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

class Edit : public QLineEdit {
public:
    Edit(const Window& window, QWidget* parent)
        : QLineEdit(ToQString(window.text), parent), handle_(window.handle),
          digitsOnly_((window.style & ES_NUMBER) != 0) {
        setAlignment(AlignmentOf(window.style));
        connect(this, &QLineEdit::textEdited, [this](const QString& now) { Type(now); });
    }

    void Show(const QString& text) {
        const QSignalBlocker quiet(this);
        setText(text);
        accepted_ = text;
    }

    // An end of -1 is the text's end.
    void Select(int start, int end) {
        const int stop = end < 0 ? static_cast<int>(text().size()) : end;
        setSelection(start, stop - start);
    }

    void TellChange() {
        const HWND handle = handle_;
        NotifyParent(handle, EN_UPDATE);
        NotifyParent(handle, EN_CHANGE);
    }

private:
    void Type(const QString& now) {
        if (digitsOnly_ && CountOthersThanDigits(now) > CountOthersThanDigits(accepted_)) {
            Refuse(now);
            return;
        }
        accepted_ = now;
        if (Window* window = FindWindowOf(handle_)) {
            window->text = now.toLatin1().toStdString();
            TellChange();
        }
    }

    void Refuse(const QString& now) {
        const auto place = cursorPosition() - (now.size() - accepted_.size());
        Show(accepted_);
        setCursorPosition(static_cast<int>(std::max<qsizetype>(place, 0)));
        QApplication::beep();
    }

    HWND handle_;
    bool digitsOnly_;
    QString accepted_;
};

QWidget* Make(const Window& window, QWidget* parent) {
    return new Edit(window, parent);
}

void ShowText(QWidget& widget, const QString& text) {
    static_cast<Edit&>(widget).Show(text);
}

LRESULT Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* edit = static_cast<Edit*>(WidgetOf(handle));
    switch (message) {
    case WM_SETTEXT: {
        const LRESULT result = DefControlProc(handle, message, wParam, lParam);
        if (edit != nullptr) {
            edit->TellChange();
        }
        return result;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        NotifyParent(handle, message == WM_SETFOCUS ? EN_SETFOCUS : EN_KILLFOCUS);
        return 0;
    case EM_SETSEL:
        if (edit != nullptr) {
            edit->Select(static_cast<int>(wParam), static_cast<int>(lParam));
        }
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_HASSETSEL;
    default:
        return DefControlProc(handle, message, wParam, lParam);
    }
}

} // namespace

const ControlKind kEdit = {"Edit", 0, 0, Make, ShowText, Procedure};

extern "C" BOOL MessageBeep(UINT) {
    QApplication::beep();
    return 1;
}

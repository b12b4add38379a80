#include "tests/drive/drive.h"

#include "platform/qt/grab.h"
#include "platform/qt/graphics.h"
#include "tests/drive/qt_events.h"

#include <dlfcn.h>
#include <map>

namespace {

DialogWatch watch;

// Where the client area lies in the window's widget.
QPoint ClientCorner(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    const QWidget* widget = WidgetForTest(window);
    return {(widget->width() - client.right) / 2, (widget->height() - client.bottom) / 2};
}

QPoint PlaceInWidget(HWND window, POINT place) {
    return ClientCorner(window) + QPoint(place.x, place.y);
}

Qt::Key QtKey(int key) {
    static const std::map<int, Qt::Key> keys = {
        {kKeyTab, Qt::Key_Tab},       {kKeyEnter, Qt::Key_Return},
        {kKeyEscape, Qt::Key_Escape}, {kKeySpace, Qt::Key_Space},
        {kKeyPageUp, Qt::Key_PageUp}, {kKeyPageDown, Qt::Key_PageDown},
        {kKeyEnd, Qt::Key_End},       {kKeyHome, Qt::Key_Home},
        {kKeyLeft, Qt::Key_Left},     {kKeyUp, Qt::Key_Up},
        {kKeyRight, Qt::Key_Right},   {kKeyDown, Qt::Key_Down},
        {kKeyDelete, Qt::Key_Delete},
    };
    const auto found = keys.find(key);
    return found != keys.end() ? found->second : static_cast<Qt::Key>(key);
}

Screen ScreenOfImage(const QImage& image) {
    Screen screen(image.width(), image.height(), 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            screen.At(x, y) = image.pixel(x, y) & 0xFFFFFF;
        }
    }
    return screen;
}

} // namespace

void PressMouse(HWND window, POINT place) {
    qt_events::PressMouse(window, PlaceInWidget(window, place));
}

void DragMouse(HWND window, POINT place) {
    qt_events::DragMouse(window, PlaceInWidget(window, place));
}

void MoveMouse(HWND window, POINT place) {
    qt_events::SendMouseTo(window, QEvent::MouseMove, PlaceInWidget(window, place), Qt::NoButton);
}

void ReleaseMouse(HWND window, POINT place) {
    qt_events::ReleaseMouse(window, PlaceInWidget(window, place));
}

void ClickMouse(HWND window, POINT place) {
    qt_events::ClickMouse(window, PlaceInWidget(window, place));
}

void TypeKey(int key, int modifier) {
    const QString text = key >= '0' && key <= '9' ? QString(QChar(key)) : QString();
    const bool backwards = key == kKeyTab && modifier == kShift;
    qt_events::TypeKey(backwards ? Qt::Key_Backtab : QtKey(key),
                       modifier == kShift ? Qt::ShiftModifier
                       : modifier == kAlt ? Qt::AltModifier
                                          : Qt::NoModifier,
                       text);
}

void PressCloseBox(HWND window) {
    WidgetForTest(window)->close();
}

void RunPending() {
    qt_events::RunPending();
}

HINSTANCE ModuleWithoutDialogs() {
    return nullptr;
}

void WatchDialogs(DialogWatch next) {
    watch = std::move(next);
}

// Stands before the platform's own.
extern "C" INT_PTR DialogBoxParamA(HINSTANCE instance, LPCSTR name, HWND parent, DLGPROC procedure,
                                   LPARAM param) {
    const auto real =
        reinterpret_cast<decltype(&DialogBoxParamA)>(dlsym(RTLD_NEXT, "DialogBoxParamA"));
    const int id = static_cast<int>(reinterpret_cast<std::intptr_t>(name));
    if (watch.opens) {
        watch.opens(id);
    }
    const INT_PTR result = real(instance, name, parent, procedure, param);
    if (watch.ends) {
        watch.ends(id, result);
    }
    return result;
}

Screen ScreenOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    const QImage whole = GrabWindow(window);
    return ScreenOfImage(
        whole.copy(QRect(ClientCorner(window), QSize(client.right, client.bottom))));
}

struct DrawnPicture::Surface {
    QImage image;
    HDC dc = nullptr;
};

DrawnPicture::DrawnPicture(const Screen& start) : surface_(std::make_unique<Surface>()) {
    QImage& image = surface_->image;
    image = QImage(start.width, start.height, QImage::Format_RGB32);
    for (int y = 0; y < start.height; ++y) {
        for (int x = 0; x < start.width; ++x) {
            image.setPixel(x, y, start.At(x, y));
        }
    }
    surface_->dc = OpenDeviceContext(image, image.rect());
}

DrawnPicture::~DrawnPicture() {
    if (surface_->dc != nullptr) {
        CloseDeviceContext(surface_->dc);
    }
}

HDC DrawnPicture::Dc() const {
    return surface_->dc;
}

Screen DrawnPicture::Finish() {
    CloseDeviceContext(std::exchange(surface_->dc, nullptr));
    return ScreenOfImage(surface_->image);
}

#include "platform/qt/key_source_x11.h"

#include "platform/qt/focus.h"
#include "platform/qt/key_state.h"

#include <QGuiApplication>

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

namespace {

struct Connection {
    Display* display = nullptr;
    int extension = 0;
};

// Raw presses reach every connection, whoever has the focus or a grab.
bool SelectRawKeys(Connection& connection) {
    int event = 0;
    int error = 0;
    int major = 2;
    int minor = 2;
    if (!XQueryExtension(connection.display, "XInputExtension", &connection.extension, &event,
                         &error) ||
        XIQueryVersion(connection.display, &major, &minor) != 0) {
        return false;
    }
    unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
    XISetMask(bits, XI_RawKeyPress);
    XISetMask(bits, XI_RawKeyRelease);
    XIEventMask mask{XIAllMasterDevices, sizeof bits, bits};
    XISelectEvents(connection.display, DefaultRootWindow(connection.display), &mask, 1);
    XFlush(connection.display);
    return true;
}

Connection Open() {
    const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (application == nullptr || application->display() == nullptr) {
        return {};
    }
    Connection connection;
    connection.display = XOpenDisplay(DisplayString(application->display()));
    if (connection.display != nullptr && !SelectRawKeys(connection)) {
        XCloseDisplay(connection.display);
        connection.display = nullptr;
    }
    return connection;
}

// Kept for the process.
Connection& OpenedOnce() {
    static Connection connection = Open();
    return connection;
}

bool opened = false;

int VirtualKeyOf(Display* display, int keycode) {
    for (const KeyRow* row = kKeys; row->virtualKey != 0; ++row) {
        if (XKeysymToKeycode(display, row->x11Symbol) == keycode) {
            return row->virtualKey;
        }
    }
    return 0;
}

void Note(Display* display, const XGenericEventCookie& cookie) {
    const auto& raw = *static_cast<const XIRawEvent*>(cookie.data);
    const int virtualKey = VirtualKeyOf(display, raw.detail);
    if (virtualKey == 0) {
        return;
    }
    if (cookie.evtype == XI_RawKeyRelease) {
        NoteRelease(virtualKey);
    } else if (OwnWindowIsActive()) {
        NotePress(virtualKey, static_cast<u32>(raw.time));
    }
}

void Drain(const Connection& connection) {
    while (XPending(connection.display) > 0) {
        XEvent event;
        XNextEvent(connection.display, &event);
        if (event.type == GenericEvent && event.xcookie.extension == connection.extension &&
            XGetEventData(connection.display, &event.xcookie)) {
            Note(connection.display, event.xcookie);
            XFreeEventData(connection.display, &event.xcookie);
        }
    }
}

} // namespace

bool ReadX11Keys() {
    const Connection& connection = OpenedOnce();
    opened = true;
    if (connection.display == nullptr) {
        return false;
    }
    Drain(connection);
    return true;
}

void SynchroniseX11Keys() {
    if (opened && OpenedOnce().display != nullptr) {
        XSync(OpenedOnce().display, 0);
        Drain(OpenedOnce());
    }
}

// What lives: windows, timers, classes and drawing objects, counted at the calls that make them.
#include "platform/qt/graphics_testing.h"
#include "platform/qt/window_testing.h"
#include "tests/support/windows/import_hooks.h"

#include <set>
#include <utility>

namespace {

std::set<HGDIOBJ> drawingObjects;
std::set<HDC> contexts;
std::set<std::pair<HWND, UINT_PTR>> timers;
std::size_t classes = 0;

ATOM WINAPI HookedRegisterClassExA(const WNDCLASSEXA* windowClass);
BOOL WINAPI HookedUnregisterClassA(LPCSTR name, HINSTANCE instance);
UINT_PTR WINAPI HookedSetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
BOOL WINAPI HookedKillTimer(HWND window, UINT_PTR id);
HBRUSH WINAPI HookedCreateSolidBrush(COLORREF color);
HPEN WINAPI HookedCreatePen(int style, int width, COLORREF color);
HFONT WINAPI HookedCreateFontIndirectA(const LOGFONTA* description);
HBITMAP WINAPI HookedLoadBitmapA(HINSTANCE instance, LPCSTR name);
BOOL WINAPI HookedDeleteObject(HGDIOBJ object);
HDC WINAPI HookedCreateCompatibleDC(HDC dc);
BOOL WINAPI HookedDeleteDC(HDC dc);

HOOK_IMPORT("user32", RegisterClassExA, 4)
HOOK_IMPORT("user32", UnregisterClassA, 8)
HOOK_IMPORT("user32", SetTimer, 16)
HOOK_IMPORT("user32", KillTimer, 8)
HOOK_IMPORT("gdi32", CreateSolidBrush, 4)
HOOK_IMPORT("gdi32", CreatePen, 12)
HOOK_IMPORT("gdi32", CreateFontIndirectA, 4)
HOOK_IMPORT("user32", LoadBitmapA, 8)
HOOK_IMPORT("gdi32", DeleteObject, 4)
HOOK_IMPORT("gdi32", CreateCompatibleDC, 4)
HOOK_IMPORT("gdi32", DeleteDC, 4)

template <class Set, class Object>
Object Noted(Set& set, Object object) {
    if (object != nullptr) {
        set.insert(object);
    }
    return object;
}

ATOM WINAPI HookedRegisterClassExA(const WNDCLASSEXA* windowClass) {
    const ATOM atom = SystemRegisterClassExA(windowClass);
    classes += atom != 0 ? 1 : 0;
    return atom;
}

BOOL WINAPI HookedUnregisterClassA(LPCSTR name, HINSTANCE instance) {
    const BOOL gone = SystemUnregisterClassA(name, instance);
    classes -= gone != 0 ? 1 : 0;
    return gone;
}

UINT_PTR WINAPI HookedSetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    const UINT_PTR set = SystemSetTimer(window, id, milliseconds, procedure);
    if (set != 0) {
        timers.insert({window, window == nullptr ? set : id});
    }
    return set;
}

BOOL WINAPI HookedKillTimer(HWND window, UINT_PTR id) {
    timers.erase({window, id});
    return SystemKillTimer(window, id);
}

HBRUSH WINAPI HookedCreateSolidBrush(COLORREF color) {
    return Noted(drawingObjects, SystemCreateSolidBrush(color));
}

HPEN WINAPI HookedCreatePen(int style, int width, COLORREF color) {
    return Noted(drawingObjects, SystemCreatePen(style, width, color));
}

HFONT WINAPI HookedCreateFontIndirectA(const LOGFONTA* description) {
    return Noted(drawingObjects, SystemCreateFontIndirectA(description));
}

HBITMAP WINAPI HookedLoadBitmapA(HINSTANCE instance, LPCSTR name) {
    return Noted(drawingObjects, SystemLoadBitmapA(instance, name));
}

BOOL WINAPI HookedDeleteObject(HGDIOBJ object) {
    drawingObjects.erase(object);
    return SystemDeleteObject(object);
}

HDC WINAPI HookedCreateCompatibleDC(HDC dc) {
    return Noted(contexts, SystemCreateCompatibleDC(dc));
}

BOOL WINAPI HookedDeleteDC(HDC dc) {
    contexts.erase(dc);
    return SystemDeleteDC(dc);
}

// The system's own windows of a thread do not count.
BOOL CALLBACK CountWindow(HWND window, LPARAM count) {
    char name[32] = "";
    GetClassNameA(window, name, sizeof(name));
    const bool ours = lstrcmpiA(name, "IME") != 0 && lstrcmpiA(name, "MSCTFIME UI") != 0;
    *reinterpret_cast<std::size_t*>(count) += ours ? 1 : 0;
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM count) {
    CountWindow(window, count);
    EnumChildWindows(window, CountWindow, count);
    return TRUE;
}

} // namespace

std::size_t LiveWindowCount() {
    std::size_t count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWithChildren, reinterpret_cast<LPARAM>(&count));
    return count;
}

std::size_t LiveTimerCount() {
    std::erase_if(timers, [](const auto& timer) {
        return timer.first != nullptr && IsWindow(timer.first) == 0;
    });
    return timers.size();
}

// There are no widgets besides.
std::size_t LiveWidgetCount() {
    return LiveWindowCount();
}

std::size_t RegisteredClassCount() {
    return classes;
}

std::size_t LiveGdiObjectCount() {
    return drawingObjects.size();
}

std::size_t LiveDeviceContextCount() {
    return contexts.size();
}

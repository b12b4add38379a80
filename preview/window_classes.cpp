// The window classes of a pane. They stay registered for the life of the process.
#include "preview/preview_control.h"

#include "preview/control_window.h"
#include "preview/image_window.h"

namespace {

constexpr WORD kOpenHandCursor = 4387;

bool RegisterPreviewClass(HINSTANCE instance, const char* name, WNDPROC procedure, HCURSOR cursor,
                          HBRUSH background) {
    WNDCLASSEXA windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.style = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS;
    windowClass.lpfnWndProc = procedure;
    windowClass.cbWndExtra = sizeof(void*);
    windowClass.hInstance = instance;
    windowClass.hCursor = cursor;
    windowClass.hbrBackground = background;
    windowClass.lpszClassName = name;
    return RegisterClassExA(&windowClass) != 0;
}

} // namespace

bool RegisterPreviewClasses(HINSTANCE instance) {
    const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    const HCURSOR openHand = LoadCursorA(instance, MAKEINTRESOURCEA(kOpenHandCursor));
    const HBRUSH menuColour = SystemColourBrush(COLOR_MENU);
    const HBRUSH lightGrey = static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH));
    return RegisterPreviewClass(instance, kPreviewClass, PreviewProcedure, arrow, menuColour) &&
           RegisterPreviewClass(instance, kMiniPreviewClass, PreviewProcedure, arrow, menuColour) &&
           RegisterPreviewClass(instance, kImageClass, ImageProcedure, openHand, lightGrey);
}

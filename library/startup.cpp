#include "library/startup.h"

#include "dialogs/module_instance.h"
#include "preview/preview_control.h"

BOOL LibraryEntry(HINSTANCE instance) {
    moduleInstance = instance;
    RegisterPreviewClasses(instance);
    return TRUE;
}

#include "dialogs/module_instance.h"

HINSTANCE moduleInstance = nullptr;

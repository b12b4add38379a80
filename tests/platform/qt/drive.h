// Drives windows of the layer as a person does.
#pragma once

#include "platform/base/module.h"
#include "tests/drive/qt_events.h"

using namespace qt_events;

// The resources of windows_test.rc.
HINSTANCE TestModule();

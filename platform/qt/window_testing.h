// For tests only: what lives, and the widgets behind handles.
#pragma once

#include "platform/win32.h"

#include <cstddef>

class QWidget;

ZQ_API std::size_t LiveWindowCount();
ZQ_API std::size_t LiveTimerCount();
// Widgets of the whole application; those that wait for their deletion count.
ZQ_API std::size_t LiveWidgetCount();
// Without the classes that the layer brings.
ZQ_API std::size_t RegisteredClassCount();

// Null for a null, stale or wrong handle.
ZQ_API QWidget* WidgetForTest(HWND window);

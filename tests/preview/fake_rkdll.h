// An imaging library that shows every picture black and remembers what passed.
#pragma once

#include "preview/view_region.h"
#include "rkdll/rkdll.h"

struct FakeRkdll {
    bool refuses = false;         // to render nothing
    Extent renderedSize = {9, 9}; // of its renderings

    int renders = 0;
    DocHandle document = 0;
    i32 layer = 0;
    i32 zero = -1;
    RkBackground background = {};
    int displays = 0;
    RECT rectangle = {};
};

// Set to FakeRkdll{} before use.
extern FakeRkdll fakeRkdll;

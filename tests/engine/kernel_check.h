// Compares an effect of the engine with its reference on many made pictures and records.
#pragma once

#include "engine/dib_format.h"
#include <zq/document.h>

#include <iosfwd>
#include <span>
#include <string>
#include <vector>

// A word of a record: values that the effect takes, and how far beyond them tests go.
struct RecordField {
    i32 low;
    i32 high;
    i32 wildLow = INT32_MIN;
    i32 wildHigh = INT32_MAX;
};

enum KernelTraits : u32 {
    kByteTable = 1,         // 256 bytes follow the fields
    kVeryWide = 2,          // sizes beyond 2,048 or 32,767 might change the arithmetic
    kBlackWithoutTable = 8, // black, not 0, when the working table cannot be had
    kWindow = 16,           // the first field is the width of a window
    kCostly = 4,            // a first field above `costlyAbove` makes large pictures too slow
};

struct CheckedKernel {
    EffectId id;
    std::string name;
    std::vector<RecordField> fields;
    u32 traits = 0;
    i32 costlyAbove = 0;
};

// All effects of the engine.
std::span<const CheckedKernel> CheckedKernels();
void PrintTo(const CheckedKernel& kernel, std::ostream* out);

// Runs the effect on some hundred cases, twenty times as many with ZQ_LONG in the environment, each
// with the vector code of some instruction set, and compares the result's bytes, the questions,
// reports and cursors in their order and the random draws; with yes answered to a question; and
// with each allocation failing.
void CheckKernel(const CheckedKernel& kernel);

// Makes one run with a record that the effect takes and a small window, and compares it in the same
// way.
void CheckKernelOn(const CheckedKernel& kernel, const std::vector<u8>& picture);

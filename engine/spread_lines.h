// The questions and reports of kernels whose work goes in other pieces than the lines that callers
// see.
#pragma once

#include "engine/frame.h"

#include <algorithm>

// Lines `begin` to `end` - 1 of `count`, as KernelRun::BeginLine asks and reports them.
struct AskedLines {
    i32 begin;
    i32 end;
    i32 count;
    i32 base;
    i32 span;
};

// Asks and reports all lines of `first` and then those of `second`, evenly spread over the work, so
// that it stops soon whenever it is told to.
class SpreadLines {
public:
    SpreadLines(const KernelRun& run, const AskedLines& first, const AskedLines& second)
        : run_(run), first_(first), second_(second) {}

    // To be called before piece `index` of `pieces`, for each in turn. False when the run is to
    // stop.
    bool Begin(i64 index, i64 pieces) {
        const i64 due = (Count(first_) + Count(second_)) * (index + 1) / pieces;
        for (; asked_ < due; ++asked_) {
            if (!(asked_ < Count(first_) ? Ask(first_, asked_)
                                         : Ask(second_, asked_ - Count(first_)))) {
                return false;
            }
        }
        return true;
    }

private:
    static i64 Count(const AskedLines& lines) { return std::max(lines.end - lines.begin, 0); }
    bool Ask(const AskedLines& lines, i64 index) const {
        return run_.BeginLine(lines.begin + static_cast<i32>(index), lines.count, lines.base,
                              lines.span);
    }

    const KernelRun& run_;
    const AskedLines first_;
    const AskedLines second_;
    i64 asked_ = 0;
};

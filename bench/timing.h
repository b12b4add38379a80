// Times of single runs, for programs that print them themselves.
#pragma once

#include "platform/types.h"

#include <algorithm>
#include <ctime>
#include <vector>

// The seconds that this thread has worked: what others do on the machine counts little.
inline double ThreadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The median of `runs` times of `work`, in seconds. A first run that nobody times brings memory and
// tables in.
template <class Work>
double MedianSeconds(i32 runs, const Work& work) {
    work();
    std::vector<double> seconds;
    for (i32 run = 0; run < runs; ++run) {
        const double start = ThreadSeconds();
        work();
        seconds.push_back(ThreadSeconds() - start);
    }
    const auto middle = seconds.begin() + runs / 2;
    std::nth_element(seconds.begin(), middle, seconds.end());
    return *middle;
}

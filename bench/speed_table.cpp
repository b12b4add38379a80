#include "bench/speed_table.h"

#include <cstdio>

bool SpeedTable::ReportContext(const Context&) {
    std::printf("%-25s %10s %10s\n", "Mpixel/s", "colour", "grey");
    return true;
}

void SpeedTable::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.find('/');
        if (name.substr(0, slash) != effect_) {
            PrintLine();
            effect_ = name.substr(0, slash);
        }
        if (run.error_occurred) {
            std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
            continue;
        }
        const auto counter = run.counters.find(kSpeedCounter);
        if (counter != run.counters.end()) {
            speeds_[name.substr(slash + 1)] = counter->second.value;
        }
    }
}

void SpeedTable::Finalize() {
    PrintLine();
}

void SpeedTable::PrintLine() {
    if (speeds_.empty()) {
        return;
    }
    std::printf("%-25s", effect_.c_str());
    for (const char* picture : {"colour", "grey"}) {
        const auto speed = speeds_.find(picture);
        if (speed == speeds_.end()) {
            std::printf(" %10s", "-");
        } else {
            std::printf(" %10.1f", speed->second);
        }
    }
    std::printf("\n");
    std::fflush(stdout);
    speeds_.clear();
}

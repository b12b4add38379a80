// Prints one line per effect: megapixels per second in colour and in grey.
#pragma once

#include "tools/effect_table.h"

#include <benchmark/benchmark.h>
#include <map>

// Counter of a run that gives megapixels per second.
inline constexpr const char* kSpeedCounter = "Mpixel/s";

// A benchmark's name is effect/colour or effect/grey; lines come as soon as both are there.
class SpeedTable : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    void PrintLine();

    std::string effect_; // of the line in the making
    std::map<std::string, double> speeds_;
};

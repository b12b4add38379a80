// Times every effect with its defaults, in colour and in grey.
#include "bench/bench_pictures.h"
#include "bench/speed_table.h"
#include <zq/engine.h>

#include <cstdio>

namespace {

void TimeEffect(benchmark::State& state, const EffectDescription& effect, DibHandle picture) {
    for ([[maybe_unused]] auto _ : state) {
        const OwnedBlock result(RunEffect(picture, effect.id, effect.defaults));
        if (!result) {
            state.SkipWithError("the effect gave no picture");
            return;
        }
    }
    const double pixels = double{kBenchWidth} * kBenchHeight;
    state.counters[kSpeedCounter] =
        benchmark::Counter(pixels * 1e-6, benchmark::Counter::kIsIterationInvariantRate);
}

void Register(const EffectDescription& effect, ImageClass imageClass, const char* picture,
              DibHandle dib) {
    if ((effect.takes & ClassBit(imageClass)) != 0) {
        const std::string name = std::string(effect.name).append("/").append(picture);
        benchmark::RegisterBenchmark(
            name.c_str(),
            [&effect, dib](benchmark::State& state) { TimeEffect(state, effect, dib); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    const OwnedBlock colour = MakeBenchPicture(kBenchWidth, kBenchHeight, false);
    const OwnedBlock grey = MakeBenchPicture(kBenchWidth, kBenchHeight, true);
    if (!colour || !grey) {
        std::fputs("zq_bench: the pictures to work on cannot be made\n", stderr);
        return 2;
    }
    for (const EffectDescription& effect : EffectTable()) {
        Register(effect, ImageClass::Colour, "colour", colour.Handle());
        Register(effect, ImageClass::Grey, "grey", grey.Handle());
    }
    SpeedTable table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return 0;
}

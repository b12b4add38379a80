// Prints, as comma-separated values, what effects cost per pixel at several sizes of the picture
// and values of their parameter.
#include "bench/bench_pictures.h"
#include "bench/timing.h"
#include "tools/effect_table.h"
#include <zq/engine.h>

#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

constexpr i32 kRuns = 3;

// Nanoseconds per pixel; below 0 when there was no picture.
double Cost(DibHandle picture, double pixels, EffectId id, const void* record) {
    bool failed = false;
    const double seconds = MedianSeconds(
        kRuns, [&] { failed = !OwnedBlock(RunEffect(picture, id, record)) || failed; });
    return failed ? -1 : seconds * 1e9 / pixels;
}

OwnedBlock MakePicture(i32 megapixels, double& pixels) {
    const auto width = static_cast<i32>(std::sqrt(megapixels * 1e6 * 4 / 3)) / 4 * 4;
    const i32 height = width * 3 / 4;
    pixels = static_cast<double>(width) * height;
    return MakeBenchPicture(width, height, false);
}

void PrintSizes() {
    for (const i32 megapixels : {1, 4, 12, 48, 100}) {
        double pixels = 0;
        const OwnedBlock picture = MakePicture(megapixels, pixels);
        for (const EffectId id : {3, 6, 2, 8, 17, 20, 21, 25, 40, 36, 41, 52, 54}) {
            const EffectDescription& effect = *FindEffect(id);
            std::printf("megapixels,%s,%d,%.4f\n", effect.title, megapixels,
                        Cost(picture.Handle(), pixels, id, effect.defaults));
            std::fflush(stdout);
        }
    }
}

// Records of up to three words whose word `word` is the parameter.
struct Series {
    EffectId id;
    const char* name;
    i32 record[4];
    std::size_t word;
    bool isRadius = false;
};

void PrintParameters() {
    const Series series[] = {{8, "Average", {}, 0},
                             {9, "Centre-Weighted Blur", {0, 5}, 0},
                             {17, "Gaussian Blur", {}, 0},
                             {18, "Unsharp Mask", {0, 100, 0}, 0},
                             {20, "Maximum and Minimum", {0, 1}, 0},
                             {21, "Median", {}, 0},
                             {53, "Diagonal Motion Blur", {1}, 1},
                             {40, "Oil Painting", {}, 0, true}};
    double pixels = 0;
    const OwnedBlock picture = MakePicture(4, pixels);
    for (const Series& one : series) {
        const i32 last = one.isRadius ? 15 : 32;
        for (i32 value = one.isRadius ? 1 : 2; value <= last; value += value < 8 ? 1 : 3) {
            i32 record[4];
            std::memcpy(record, one.record, sizeof record);
            record[one.word] = value;
            std::printf("%s,%s,%d,%.4f\n", one.isRadius ? "radius" : "size", one.name, value,
                        Cost(picture.Handle(), pixels, one.id, record));
            std::fflush(stdout);
        }
    }
}

} // namespace

int main() {
    std::puts("along,effect,value,nanoseconds per pixel");
    PrintSizes();
    PrintParameters();
    return 0;
}

// Prints what kernels and editors compute with the C library's functions, so that two platforms'
// libraries can be compared with diff: a digest for each table and parameter, or, for the tables
// named by the argument, every entry.
#include "editors/curve.h"
#include "engine/colour/tone_adjustment.h"
#include "engine/neighbourhood/gaussian_blur.h"

#include <cmath>
#include <cstdio>
#include <functional>
#include <string>

namespace {

constexpr double kTurnUnit = 16384.0;
constexpr int kRings = 512;

std::string wanted;

using Entry = std::function<i32(int index)>;

void List(const std::string& name, int first, int end, const Entry& entry) {
    if (!wanted.empty() && name.rfind(wanted, 0) != 0) {
        return;
    }
    u64 digest = 0xCBF29CE484222325u;
    for (int i = first; i < end; ++i) {
        const i32 value = entry(i);
        digest = (digest ^ static_cast<u32>(value)) * 0x100000001B3u;
        if (!wanted.empty()) {
            std::printf("%s [%d] %d\n", name.c_str(), i, value);
        }
    }
    if (wanted.empty()) {
        std::printf("%s %08x%08x\n", name.c_str(), static_cast<u32>(digest >> 32),
                    static_cast<u32>(digest));
    }
}

std::string Named(const char* table, int first, int second = 0, int third = 0) {
    std::string name = table;
    for (const int parameter : {first, second, third}) {
        name.append(" ").append(std::to_string(parameter));
    }
    return name;
}

i32 Fixed(double value) {
    return static_cast<i32>(value * kTurnUnit);
}

// Both numbers of a turn by an angle for each ring.
void ListTurns(const std::string& name, const std::function<double(int ring)>& angle) {
    List(name + " cos", 0, kRings, [&](int ring) { return Fixed(std::cos(angle(ring))); });
    List(name + " sin", 0, kRings, [&](int ring) { return Fixed(std::sin(angle(ring))); });
}

double RadiusOf(int ring) {
    return std::sqrt(ring * 0.001953125);
}

void ListWarps() {
    for (int intensity = 1; intensity <= 100; ++intensity) {
        ListTurns(Named("spiral", intensity),
                  [&](int ring) { return RadiusOf(ring) * intensity * 0.12566370600000001; });
        ListTurns(Named("whirlpool", intensity), [&](int ring) {
            const double inward = RadiusOf(ring) - 1.0;
            return inward * inward * intensity * -0.06283185300000001;
        });
        List(Named("cone", intensity), 1, kRings, [&](int ring) {
            return static_cast<i32>(kTurnUnit / std::pow(ring * 0.001953125, intensity * 0.003));
        });
        List(Named("fisheye", intensity), 1, kRings,
             [&](int ring) { return Fixed(std::pow(ring * 0.001953125, intensity * 0.0075)); });
    }
    List("pull", 0, kRings,
         [](int ring) { return Fixed(std::sqrt(2.0 * (1.0 - RadiusOf(ring)) * RadiusOf(ring))); });
    List("bulge", 1, kRings, [](int ring) {
        const double radius = RadiusOf(ring);
        return Fixed((2.0 * std::asin(radius)) / (radius * 3.14159265));
    });
    for (int level = 0; level < 256; ++level) { // a curve of one level
        ListTurns(Named("mirror", level),
                  [&](int ring) { return (ring * 0.498046875 - level) * 0.031415926500000003; });
    }
}

void ListWaves() {
    for (int length = 3; length <= 53; ++length) {
        List(Named("ripple", length), 0, 20000, [&](int i) {
            const double sine = std::sin(i * 12.5663706 / length);
            return static_cast<i32>(std::abs(length - i % (2 * length)) * sine * 0.25 + 0.5);
        });
    }
    for (int frequency = 0; frequency <= 100; ++frequency) {
        for (const int width : {1, 64, 97, 640, 1001, 4000}) {
            for (const int shift : {1, 100, 750, 3000}) {
                List(Named("ribbon", frequency, width, shift), 0, width, [&](int x) {
                    const double wave = std::cos(x * (frequency * 0.1 / width) * 3.1415926);
                    return static_cast<i32>((wave + 1.0) * 0.5 * shift);
                });
            }
        }
    }
    for (int width = 2; width <= 2000; ++width) {
        List(Named("stretch", width), 0, width, [&](int x) {
            const double u = 2.0 * x / width - 1.0;
            return static_cast<i32>((std::asin(u) * 0.31830989161357204 + 0.5) * width * 256.0);
        });
    }
}

void ListTones() {
    List("log", 0, 256, [](int tone) {
        return static_cast<i32>(255 * std::log(tone + 1.0) / std::log(256.0) + 0.5);
    });
    for (int intensity = 1; intensity <= 100; ++intensity) {
        const int highCut = 255 - intensity / 5;
        const int quarters = intensity / 25;
        const double exponent = (1.0 - quarters * 0.06) * (1000.0 - intensity) * 0.001;
        List(Named("enhance", intensity), 0, highCut, [&](int i) {
            return static_cast<i32>(std::pow(static_cast<double>(i) / highCut, exponent) * 255.0 +
                                    0.5);
        });
    }
    for (int highlight = -100; highlight <= 100; highlight += 10) {
        for (int midtone = -100; midtone <= 100; ++midtone) {
            for (int shadow = -100; shadow <= 100; shadow += 10) {
                const auto table = BuildToneTable(highlight, midtone, shadow);
                List(Named("tone", highlight, midtone, shadow), 0, 256,
                     [&](int i) { return table[static_cast<std::size_t>(i)]; });
            }
        }
    }
    for (int size = 2; size <= kGaussianLargest; ++size) {
        const auto weights = GaussianWeights(size);
        List(Named("gaussian", size), 0, size,
             [&](int tap) { return weights[static_cast<std::size_t>(tap)]; });
    }
    for (int preset = 0; preset <= static_cast<int>(CurvePreset::Squareroot); ++preset) {
        Curve curve = IdentityCurve();
        ApplyPreset(curve, static_cast<CurvePreset>(preset));
        List(Named("preset", preset), 0, 256,
             [&](int i) { return curve[static_cast<std::size_t>(i)]; });
    }
}

} // namespace

int main(int argc, char** argv) {
    wanted = argc > 1 ? argv[1] : "";
    ListWarps();
    ListWaves();
    ListTones();
}

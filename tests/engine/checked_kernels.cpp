#include "tests/engine/kernel_check.h"

#include <ostream>

namespace {

constexpr RecordField kIntensity = {1, 100};
constexpr RecordField kSize = {2, 32};
constexpr RecordField kChannel = {0, 3};
constexpr RecordField kWord = {INT32_MIN, INT32_MAX};
constexpr RecordField kPercent = {-100, 100, -200, 200};
constexpr RecordField kCell = {-8, 8};

const CheckedKernel kKernels[] = {
    {1, "BrightnessContrast", {kChannel, {-128, 127}, {-128, 127}}},
    {2, "HueSaturation", {{-180, 180}, {-100, 100}}},
    {3, "ToneTable", {kChannel}, kByteTable},
    {4, "ColorReduction", {kChannel, {2, 128}}},
    {5, "Equalize", {}},
    {6, "Negative", {}},
    {7, "Threshold", {{0, 255}}},
    {8, "Average", {kSize}, kWindow | kVeryWide},
    {9,
     "CentreWeighted",
     {{2, 40, INT32_MIN, 600}, {0, 60, INT32_MIN, 600}},
     kCostly | kWindow | kVeryWide,
     60},
    {16, "EdgeKeepingSmooth", {}},
    {17, "GaussianBlur", {kSize}, kWindow | kVeryWide},
    {18, "UnsharpMask", {kSize, {1, 500}, {0, 255}}, kWindow | kVeryWide},
    {19, "LineSharpen", {{0, 1}}},
    {20, "MaximumAndMinimum", {kSize, {0, 1}}, kWindow | kVeryWide},
    {21, "Median", {kSize}, kCostly | kWindow, 4},
    {22, "FindContour", {{1, 1}, kChannel, {1, 254}}},
    {23, "ToneFold", {}},
    {24, "LogTone", {}},
    {25, "UserFilter", {{1, 40}, {-20, 20}, kChannel, kCell, kCell, kCell, kCell,
                        kCell,   kCell,     kCell,    kCell, kCell, kCell, kCell,
                        kCell,   kCell,     kCell,    kCell, kCell, kCell, kCell,
                        kCell,   kCell,     kCell,    kCell, kCell, kCell, kCell}},
    {32, "Sketch", {{1, 2}, {0, 254}}},
    {33, "AutoEnhance", {{1, 100, -100000, 100000}}, kVeryWide},
    {34, "FilmGrain", {kIntensity}, kVeryWide},
    {35, "Splash", {kIntensity}, kVeryWide},
    {36, "Ripple", {kIntensity}},
    {37, "Wrinkle", {kIntensity, kWord}, kBlackWithoutTable},
    {38, "AddNoise", {kIntensity}, kVeryWide},
    {39, "Melting", {kIntensity}},
    {40, "OilPainting", {{1, 6}}, kCostly | kWindow, 3},
    {41, "Fisheye", {kIntensity}, kVeryWide},
    {48, "Cone", {kIntensity}, kVeryWide},
    {49, "Whirlpool", {kIntensity}, kVeryWide},
    {50, "Spiral", {kIntensity}, kVeryWide},
    {51, "Grid3D", {{1, 3}, {0, 2}, {0, 1}}},
    {52, "Mosaic", {{1, 40}, {1, 40}}},
    {53, "MotionBlur", {{1, 8}, kSize}},
    {54, "Emboss", {{1, 8}, {1, 4}, {1, 10}, kWord}},
    {55, "ArcsineBulge", {}, kVeryWide},
    {56, "MagicMirror", {kChannel}, kByteTable | kVeryWide},
    {57, "AngularWarp", {{1, 4}, kIntensity}, kVeryWide},
    {64, "RadialWarp", {{1, 3}, kIntensity}, kVeryWide},
    {65, "Ribbon", {{0, 100, -1000000, 1000000}, {0, 100, -1000000, 1000000}, kWord}},
    {66, "ArcsineStretch", {}, kVeryWide},
    {67, "ToneAdjustment", {kPercent, kPercent, kPercent, kChannel}},
    {68, "EdgeFade", {{1, 128}}, kWindow | kVeryWide},
    {70, "WhitePoint", {{-300, 300}}},
};

} // namespace

std::span<const CheckedKernel> CheckedKernels() {
    return kKernels;
}

void PrintTo(const CheckedKernel& kernel, std::ostream* out) {
    *out << "effect " << kernel.id;
}

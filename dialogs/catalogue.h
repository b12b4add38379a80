// The effects that have a dialog: data only, for the dialogs and for programs that offer them.
#pragma once

#include "platform/types.h"
#include <zq/document.h>
#include <zq/params.h>

#include <span>

// When the caller's buffer is written.
enum class RecordWritten {
    AtOk,     // once, after OK
    Live,     // the buffer is the dialog's working record: defaults at opening, then every change
    AsResult, // the first word once, after OK: it is what the dialog ends with
    AtOpeningAndOk, // the defaults at opening, the whole at OK
};

struct EffectRow {
    EffectId id;
    const char* title; // the dialog's caption; effect 20 shows one of its two
    i32 dialog;        // resource id of its template
    std::size_t recordBytes;
    RecordWritten written;
};

inline constexpr EffectRow kEffectCatalogue[] = {
    {1, "Brightness and Contrast", 4341, sizeof(BrightnessContrastParams), RecordWritten::AtOk},
    {2, "Hue and Saturation", 4342, sizeof(HueSaturationParams), RecordWritten::Live},
    {4, "Color Reduction", 4344, sizeof(ColorReductionParams), RecordWritten::Live},
    {7, "Threshold", 4345, sizeof(ThresholdParams), RecordWritten::AtOk},
    {8, "Average", 4353, sizeof(SquareSizeParams), RecordWritten::AtOk},
    {17, "Gaussian Blur", 4353, sizeof(SquareSizeParams), RecordWritten::AtOk},
    {18, "Unsharp Mask", 4360, sizeof(UnsharpMaskParams), RecordWritten::AtOk},
    {20, "Maximum or Minimum", 4353, sizeof(RankFilterParams), RecordWritten::AtOk},
    {21, "Median", 4353, sizeof(SquareSizeParams), RecordWritten::AtOk},
    {22, "Find Contour", 4349, sizeof(FindContourParams), RecordWritten::Live},
    {25, "User's Filter", 4346, sizeof(UserFilterParams), RecordWritten::AtOpeningAndOk},
    {32, "Sketch", 4347, sizeof(SketchParams), RecordWritten::AtOk},
    {33, "Auto Enhance", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {34, "Film Grain", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {35, "Splash", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {36, "Ripple", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {37, "Wrinkle", 4356, sizeof(WrinkleParams), RecordWritten::AsResult},
    {38, "Add Noise", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {39, "Melting", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {40, "Oil Painting", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {41, "Fisheye", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {48, "Cone", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {49, "Whirlpool", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {50, "Spiral", 4356, sizeof(IntensityParams), RecordWritten::AsResult},
    {51, "3D Grid", 4352, sizeof(Grid3DParams), RecordWritten::AtOk},
    {52, "Mosaic", 4343, sizeof(MosaicParams), RecordWritten::Live},
    {53, "Motion Blur", 4351, sizeof(MotionBlurParams), RecordWritten::Live},
    {54, "Emboss", 4350, sizeof(EmbossParams), RecordWritten::Live},
    {56, "Magic Mirror", 4358, sizeof(MagicMirrorParams), RecordWritten::Live},
    {65, "Ribbon", 4357, sizeof(RibbonParams), RecordWritten::AtOk},
    {67, "Tone Adjustment", 4359, sizeof(ToneAdjustmentParams), RecordWritten::AtOk},
};

// All effects with a dialog, by rising number.
constexpr std::span<const EffectRow> EffectCatalogue() {
    return kEffectCatalogue;
}

// The row of an effect; null for one without a dialog.
constexpr const EffectRow* FindEffectRow(EffectId id) {
    for (const EffectRow& row : kEffectCatalogue) {
        if (row.id == id) {
            return &row;
        }
    }
    return nullptr;
}

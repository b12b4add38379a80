#include "tools/effect_table.h"

#include <array>
#include <cstddef>

namespace {

// ---- Rows of parameters -------------------------------------------------------------------------

constexpr EffectParameter Number(const char* name, std::size_t offset, i64 smallest, i64 largest,
                                 const char* help) {
    return {.name = name,
            .kind = ParameterKind::Number,
            .offset = offset,
            .smallest = smallest,
            .largest = largest,
            .help = help};
}

constexpr EffectParameter Choice(const char* name, std::size_t offset,
                                 std::span<const ParameterChoice> choices, const char* help) {
    return {.name = name,
            .kind = ParameterKind::Choice,
            .offset = offset,
            .choices = choices,
            .help = help};
}

constexpr EffectParameter Colour(const char* name, std::size_t offset, const char* help) {
    return {.name = name,
            .kind = ParameterKind::Colour,
            .offset = offset,
            .largest = UINT32_MAX,
            .help = help};
}

constexpr EffectParameter Bytes(const char* name, std::size_t offset, const char* help) {
    return {.name = name,
            .kind = ParameterKind::Bytes,
            .offset = offset,
            .count = 256,
            .largest = 255,
            .help = help};
}

constexpr ParameterChoice kChannels[] = {{"rgb", ZQ_CHANNEL_RGB},
                                         {"red", ZQ_CHANNEL_RED},
                                         {"green", ZQ_CHANNEL_GREEN},
                                         {"blue", ZQ_CHANNEL_BLUE}};
constexpr ParameterChoice kDirections[] = {{"top-left", 1}, {"top", 2},         {"top-right", 3},
                                           {"left", 4},     {"right", 5},       {"bottom-left", 6},
                                           {"bottom", 7},   {"bottom-right", 8}};
constexpr ParameterChoice kYesNo[] = {{"no", 0}, {"yes", 1}};
constexpr ParameterChoice kAxes[] = {{"row", 0}, {"column", 1}};
constexpr ParameterChoice kSymmetries[] = {
    {"none", 0}, {"horizontal", 1}, {"vertical", 2}, {"four-way", 3}};
constexpr ParameterChoice kSketchStyles[] = {{"crayon", 1}, {"pencil", 2}};
constexpr ParameterChoice kGridSizes[] = {{"large", 3}, {"medium", 1}, {"small", 2}};
constexpr ParameterChoice kGridHeights[] = {{"high", 0}, {"medium", 1}, {"low", 2}};
constexpr ParameterChoice kGridShapes[] = {{"regular", 0}, {"irregular", 1}};
constexpr ParameterChoice kEmbossModes[] = {
    {"original", 1}, {"midtone", 2}, {"gray", 3}, {"active", 4}};
constexpr ParameterChoice kMappings[] = {
    {"horizontal", 0}, {"vertical", 1}, {"radial", 2}, {"angular", 3}};
constexpr ParameterChoice kAngularModes[] = {
    {"spiral", 1}, {"whirlpool", 2}, {"quarter-turn", 3}, {"quarter-turn-pull", 4}};
constexpr ParameterChoice kRadialModes[] = {{"cone", 1}, {"bulge", 2}, {"fisheye", 3}};

// ---- Parameters and defaults, effect by effect --------------------------------------------------

constexpr BrightnessContrastParams kBrightnessContrastDefaults = {0, 30, 20};
constexpr EffectParameter kBrightnessContrast[] = {
    Number("brightness", offsetof(BrightnessContrastParams, brightness), -128, 127,
           "added to every tone"),
    Number("contrast", offsetof(BrightnessContrastParams, contrast), -128, 127,
           "above 0 spreads the tones, below 0 draws them together"),
    Choice("channel", offsetof(BrightnessContrastParams, channel), kChannels,
           "what is changed; a grey picture has rgb and red only"),
};

constexpr HueSaturationParams kHueSaturationDefaults = {60, -30};
constexpr EffectParameter kHueSaturation[] = {
    Number("hue", offsetof(HueSaturationParams, hue), -180, 180, "turn of all hues in degrees"),
    Number("saturation", offsetof(HueSaturationParams, saturation), -100, 100,
           "above 0 takes colour away, below 0 adds some"),
};

// A gentle S: halfway between a straight line and the smooth step.
constexpr ToneTableParams kToneTableDefaults = [] {
    ToneTableParams params{};
    for (u32 i = 0; i < 256; ++i) {
        const u32 step = i * i * (3 * 255 - 2 * i) / (255 * 255);
        params.table[i] = static_cast<u8>((i + step + 1) / 2);
    }
    return params;
}();
constexpr EffectParameter kToneTable[] = {
    Choice("channel", offsetof(ToneTableParams, channel), kChannels, "what is changed"),
    Bytes("table", offsetof(ToneTableParams, table),
          "new tone for each old one: a curve file or 256 numbers; at first a gentle S"),
};

constexpr ColorReductionParams kColorReductionDefaults = {0, 8};
constexpr EffectParameter kColorReduction[] = {
    Choice("channel", offsetof(ColorReductionParams, channel), kChannels, "what is reduced"),
    Number("levels", offsetof(ColorReductionParams, levels), 2, 128, "tones that remain"),
};

constexpr ThresholdParams kThresholdDefaults = {128};
constexpr EffectParameter kThreshold[] = {
    Number("level", offsetof(ThresholdParams, level), 0, 255, "brighter pixels become white"),
};

constexpr SquareSizeParams kSquareSizeDefaults = {3};
constexpr EffectParameter kSquareSize[] = {
    Number("size", offsetof(SquareSizeParams, size), 2, 32, "side of the square in pixels"),
};

constexpr CentreWeightedParams kCentreWeightedDefaults = {5, 5};
constexpr EffectParameter kCentreWeighted[] = {
    Number("size", offsetof(CentreWeightedParams, size), 2, 1000, "side of the square in pixels"),
    Number("centreWeight", offsetof(CentreWeightedParams, centreWeight), 0, 100000,
           "how many times more the pixel itself counts"),
};

constexpr UnsharpMaskParams kUnsharpMaskDefaults = {3, 100, 0};
constexpr EffectParameter kUnsharpMask[] = {
    Number("size", offsetof(UnsharpMaskParams, size), 2, 32, "side of the square in pixels"),
    Number("effect", offsetof(UnsharpMaskParams, effect), 1, 500, "strength in percent"),
    Number("threshold", offsetof(UnsharpMaskParams, threshold), 0, 255,
           "smallest difference that is sharpened"),
};

constexpr LineSharpenParams kLineSharpenDefaults = {0};
constexpr EffectParameter kLineSharpen[] = {
    Choice("axis", offsetof(LineSharpenParams, axis), kAxes, "along what to sharpen"),
};

constexpr RankFilterParams kRankFilterDefaults = {3, 1};
constexpr EffectParameter kRankFilter[] = {
    Number("size", offsetof(RankFilterParams, size), 2, 32, "side of the square in pixels"),
    Choice("takeMaximum", offsetof(RankFilterParams, takeMaximum), kYesNo,
           "yes: the brightest tone of the square, no: the darkest"),
};

constexpr FindContourParams kFindContourDefaults = {1, 0, 128};
constexpr EffectParameter kFindContour[] = {
    Choice("channel", offsetof(FindContourParams, channel), kChannels, "what is traced"),
    Number("threshold", offsetof(FindContourParams, threshold), 1, 254,
           "the outline runs around what is brighter"),
};
constexpr EffectParameter kFindContourOthers[] = {
    Number("mode", offsetof(FindContourParams, mode), 1, INT32_MAX, "any number but 0"),
};

constexpr UserFilterParams kUserFilterDefaults = [] {
    UserFilterParams params{};
    params.scale = 1;
    params.cells[12] = 1;
    return params;
}();
constexpr EffectParameter kUserFilter[] = {
    {.name = "filter",
     .kind = ParameterKind::File,
     .offset = 0,
     .help = "a filter file (.udf) with cells, scale and bias"},
    {.name = "cells",
     .kind = ParameterKind::Numbers,
     .offset = offsetof(UserFilterParams, cells),
     .count = 25,
     .smallest = INT32_MIN,
     .largest = INT32_MAX,
     .help = "weights, row by row from the top left"},
    {.name = "scale",
     .kind = ParameterKind::Number,
     .offset = offsetof(UserFilterParams, scale),
     .smallest = INT32_MIN,
     .largest = INT32_MAX,
     .refusesZero = true,
     .help = "divides the weighted sum"},
    Number("bias", offsetof(UserFilterParams, bias), INT32_MIN, INT32_MAX, "added at the end"),
};
constexpr EffectParameter kUserFilterOthers[] = {
    Choice("symmetry", offsetof(UserFilterParams, symmetry), kSymmetries,
           "how the editor mirrors cells; the engine does not look at it"),
};

constexpr SketchParams kSketchDefaults = {1, 0};
constexpr EffectParameter kSketch[] = {
    Choice("style", offsetof(SketchParams, style), kSketchStyles,
           "crayon: light lines on black, pencil: dark lines on white"),
    Number("threshold", offsetof(SketchParams, threshold), 0, 254, "weaker edges are left out"),
};

constexpr IntensityParams kIntensityDefaults = {50};
constexpr EffectParameter kIntensity[] = {
    Number("intensity", offsetof(IntensityParams, intensity), 1, 100, "strength in percent"),
};

constexpr IntensityParams kOilPaintingDefaults = {2};
constexpr EffectParameter kOilPainting[] = {
    Number("intensity", offsetof(IntensityParams, intensity), 1, 100,
           "reach of the brush in pixels"),
};

constexpr WrinkleParams kWrinkleDefaults = {50, 0};
constexpr EffectParameter kWrinkle[] = {
    Number("intensity", offsetof(WrinkleParams, intensity), 1, 100, "strength in percent"),
    Colour("fillColor", offsetof(WrinkleParams, fillColor), "colour of what is uncovered"),
};

constexpr Grid3DParams kGrid3DDefaults = {3, 0, 0};
constexpr EffectParameter kGrid3D[] = {
    Choice("size", offsetof(Grid3DParams, size), kGridSizes, "size of the bricks"),
    Choice("height", offsetof(Grid3DParams, height), kGridHeights, "height of the relief"),
    Choice("shape", offsetof(Grid3DParams, shape), kGridShapes, "shape of the bricks"),
};

constexpr MosaicParams kMosaicDefaults = {5, 5};
constexpr EffectParameter kMosaic[] = {
    Number("width", offsetof(MosaicParams, width), 1, INT32_MAX, "width of a block in pixels"),
    Number("height", offsetof(MosaicParams, height), 1, INT32_MAX, "height of a block in pixels"),
};

constexpr MotionBlurParams kMotionBlurDefaults = {4, 10};
constexpr EffectParameter kMotionBlur[] = {
    Choice("direction", offsetof(MotionBlurParams, direction), kDirections,
           "where the motion goes"),
    Number("speed", offsetof(MotionBlurParams, speed), 2, 32, "length of the trail in pixels"),
};

constexpr EmbossParams kEmbossDefaults = {5, 3, 2, 0};
constexpr EffectParameter kEmboss[] = {
    Choice("direction", offsetof(EmbossParams, direction), kDirections,
           "where the light comes from"),
    Choice("mode", offsetof(EmbossParams, mode), kEmbossModes,
           "what the relief stands on: the picture, its colours on gray, gray, or backColor"),
    Number("depth", offsetof(EmbossParams, depth), 1, 10, "depth of the relief in pixels"),
    Colour("backColor", offsetof(EmbossParams, backColor), "ground of mode active"),
};

constexpr MagicMirrorParams kMagicMirrorDefaults = [] {
    MagicMirrorParams params{};
    for (u32 i = 0; i < 256; ++i) {
        params.curve[i] = static_cast<u8>(i);
    }
    return params;
}();
constexpr EffectParameter kMagicMirror[] = {
    Choice("mapping", offsetof(MagicMirrorParams, mapping), kMappings,
           "what the curve bends; a curve file brings its own"),
    Bytes("curve", offsetof(MagicMirrorParams, curve),
          "source place for each place: a curve file (.mmc) or 256 numbers; at first a straight "
          "line"),
};

constexpr AngularWarpParams kAngularWarpDefaults = {1, 30};
constexpr EffectParameter kAngularWarp[] = {
    Choice("mode", offsetof(AngularWarpParams, mode), kAngularModes, "how the picture turns"),
    Number("intensity", offsetof(AngularWarpParams, intensity), 1, 100,
           "strength in percent; quarter turns have none"),
};

constexpr RadialWarpParams kRadialWarpDefaults = {3, 50};
constexpr EffectParameter kRadialWarp[] = {
    Choice("mode", offsetof(RadialWarpParams, mode), kRadialModes, "how the middle swells"),
    Number("intensity", offsetof(RadialWarpParams, intensity), 1, 100,
           "strength in percent; bulge has none"),
};

constexpr RibbonParams kRibbonDefaults = {25, 25, 0};
constexpr EffectParameter kRibbon[] = {
    Number("frequency", offsetof(RibbonParams, frequency), 0, 100, "how many waves"),
    Number("amplitude", offsetof(RibbonParams, amplitude), 0, 100, "height of the waves"),
    Colour("backColor", offsetof(RibbonParams, backColor), "colour behind the ribbon"),
};

constexpr ToneAdjustmentParams kToneAdjustmentDefaults = {0, 0, 0, 0};
constexpr EffectParameter kToneAdjustment[] = {
    Number("highlight", offsetof(ToneAdjustmentParams, highlight), -100, 100,
           "lift of light tones"),
    Number("midtone", offsetof(ToneAdjustmentParams, midtone), -100, 100, "lift of middle tones"),
    Number("shadow", offsetof(ToneAdjustmentParams, shadow), -100, 100, "lift of dark tones"),
    Choice("channel", offsetof(ToneAdjustmentParams, channel), kChannels, "what is adjusted"),
};

constexpr EdgeFadeParams kEdgeFadeDefaults = {20};
constexpr EffectParameter kEdgeFade[] = {
    {.name = "radius",
     .kind = ParameterKind::Unsigned,
     .offset = offsetof(EdgeFadeParams, radius),
     .smallest = 1,
     .largest = 128,
     .help = "width of the fade in pixels"},
};

constexpr WhitePointParams kWhitePointDefaults = {200};
constexpr EffectParameter kWhitePoint[] = {
    Number("gain", offsetof(WhitePointParams, gain), INT32_MIN, INT32_MAX,
           "above 0: the tone that becomes white, else minus the tone that white becomes"),
};

// ---- The effects --------------------------------------------------------------------------------

constexpr ImageClasses kGreyOrColour = ClassBit(ImageClass::Grey) | ClassBit(ImageClass::Colour);
constexpr ImageClasses kByteOrColour = kGreyOrColour | ClassBit(ImageClass::Palette8);
constexpr ImageClasses kPaletteAware = kByteOrColour | ClassBit(ImageClass::Palette4);
constexpr ImageClasses kAnyClass = kPaletteAware | ClassBit(ImageClass::Mono);
constexpr ImageClasses kAnyByte = ClassBit(ImageClass::Grey) | ClassBit(ImageClass::Palette8);

template <class Params>
constexpr EffectDescription
Effect(EffectId id, const char* name, const char* title, const char* help, ImageClasses takes,
       std::span<const EffectParameter> parameters, const Params& defaults,
       std::span<const EffectParameter> otherFields = {}) {
    return {id,        name,           title,           help,       takes, parameters,
            &defaults, sizeof(Params), &typeid(Params), otherFields};
}

constexpr EffectDescription Effect(EffectId id, const char* name, const char* title,
                                   const char* help, ImageClasses takes) {
    return {id, name, title, help, takes, {}, nullptr, 0};
}

constexpr EffectDescription kEffects[] = {
    Effect(1, "brightness-contrast", "Brightness and Contrast",
           "makes a picture lighter or darker, harder or softer", kPaletteAware,
           kBrightnessContrast, kBrightnessContrastDefaults),
    Effect(2, "hue-saturation", "Hue and Saturation",
           "turns colours and makes them stronger or paler", kPaletteAware, kHueSaturation,
           kHueSaturationDefaults),
    Effect(3, "tone-table", "Tone Table", "replaces each tone by that of a table", kPaletteAware,
           kToneTable, kToneTableDefaults),
    Effect(4, "color-reduction", "Color Reduction", "leaves only a few tones of each channel",
           kPaletteAware, kColorReduction, kColorReductionDefaults),
    Effect(5, "equalize", "Equalize", "spreads the tones so that all are equally frequent",
           kPaletteAware),
    Effect(6, "negative", "Negative", "inverts every tone", kAnyClass),
    Effect(7, "threshold", "Threshold", "leaves black and white only", kPaletteAware, kThreshold,
           kThresholdDefaults),
    Effect(8, "average", "Average", "blurs by the mean of a square", kGreyOrColour, kSquareSize,
           kSquareSizeDefaults),
    Effect(9, "centre-weighted-blur", "Centre-Weighted Blur",
           "blurs by the mean of a square in which the pixel itself counts more", kGreyOrColour,
           kCentreWeighted, kCentreWeightedDefaults),
    Effect(16, "edge-keeping-smooth", "Edge-Keeping Smooth", "smooths flat areas and spares edges",
           kGreyOrColour),
    Effect(17, "gaussian-blur", "Gaussian Blur", "blurs softly", kGreyOrColour, kSquareSize,
           kSquareSizeDefaults),
    Effect(18, "unsharp-mask", "Unsharp Mask", "sharpens by the difference to a blurred picture",
           kGreyOrColour, kUnsharpMask, kUnsharpMaskDefaults),
    Effect(19, "line-sharpen", "Line Sharpen", "sharpens along rows or columns", kGreyOrColour,
           kLineSharpen, kLineSharpenDefaults),
    Effect(20, "maximum-minimum", "Maximum and Minimum", "lets the light or the dark tones grow",
           kGreyOrColour, kRankFilter, kRankFilterDefaults),
    Effect(21, "median", "Median", "removes specks by the middle tone of a square", kGreyOrColour,
           kSquareSize, kSquareSizeDefaults),
    Effect(22, "find-contour", "Find Contour", "draws the outline of what is bright, on black",
           kGreyOrColour, kFindContour, kFindContourDefaults, kFindContourOthers),
    Effect(23, "tone-fold", "Tone Fold", "folds the light tones back to dark ones", kPaletteAware),
    Effect(24, "log-tone", "Logarithmic Tone", "lifts the shadows", kPaletteAware),
    Effect(25, "user-filter", "User's Filter", "weighs the 5 x 5 pixels around each one",
           kGreyOrColour, kUserFilter, kUserFilterDefaults, kUserFilterOthers),
    Effect(32, "sketch", "Sketch", "draws the edges with a crayon or a pencil", kGreyOrColour,
           kSketch, kSketchDefaults),
    Effect(33, "auto-enhance", "Auto Enhance", "brightens, strengthens colours and sharpens",
           kByteOrColour, kIntensity, kIntensityDefaults),
    Effect(34, "film-grain", "Film Grain", "adds colourless grain", kGreyOrColour, kIntensity,
           kIntensityDefaults),
    Effect(35, "splash", "Splash", "scatters the pixels", kGreyOrColour, kIntensity,
           kIntensityDefaults),
    Effect(36, "ripple", "Ripple", "shows the picture under ruffled water", kGreyOrColour,
           kIntensity, kIntensityDefaults),
    Effect(37, "wrinkle", "Wrinkle", "crumples the picture", kGreyOrColour, kWrinkle,
           kWrinkleDefaults),
    Effect(38, "add-noise", "Add Noise", "replaces some pixels by random ones", kGreyOrColour,
           kIntensity, kIntensityDefaults),
    Effect(39, "melting", "Melting", "lets dark pixels run down", kGreyOrColour, kIntensity,
           kIntensityDefaults),
    Effect(40, "oil-painting", "Oil Painting", "lets detail run together into strokes",
           kGreyOrColour, kOilPainting, kOilPaintingDefaults),
    Effect(41, "fisheye", "Fisheye", "looks through a fisheye lens", kGreyOrColour, kIntensity,
           kIntensityDefaults),
    Effect(48, "cone", "Cone", "lays the picture over a cone", kGreyOrColour, kIntensity,
           kIntensityDefaults),
    Effect(49, "whirlpool", "Whirlpool", "draws the picture into a whirlpool", kGreyOrColour,
           kIntensity, kIntensityDefaults),
    Effect(50, "spiral", "Spiral", "twists the picture about its centre", kGreyOrColour, kIntensity,
           kIntensityDefaults),
    Effect(51, "grid-3d", "3D Grid", "builds the picture of bricks", kGreyOrColour, kGrid3D,
           kGrid3DDefaults),
    Effect(52, "mosaic", "Mosaic", "lays the picture in blocks of one colour", kGreyOrColour,
           kMosaic, kMosaicDefaults),
    Effect(53, "motion-blur", "Motion Blur", "blurs along one direction", kGreyOrColour,
           kMotionBlur, kMotionBlurDefaults),
    Effect(54, "emboss", "Emboss", "turns the picture into a relief", kGreyOrColour, kEmboss,
           kEmbossDefaults),
    Effect(55, "arcsine-bulge", "Arcsine Bulge", "swells the middle of the picture", kGreyOrColour),
    Effect(56, "magic-mirror", "Magic Mirror", "bends the picture along a curve", kByteOrColour,
           kMagicMirror, kMagicMirrorDefaults),
    Effect(57, "angular-warp", "Angular Warp", "turns the picture, more or less far out",
           kGreyOrColour, kAngularWarp, kAngularWarpDefaults),
    Effect(64, "radial-warp", "Radial Warp", "swells or draws in the picture from its centre",
           kGreyOrColour, kRadialWarp, kRadialWarpDefaults),
    Effect(65, "ribbon", "Ribbon", "bends the picture into a waving band", kGreyOrColour, kRibbon,
           kRibbonDefaults),
    Effect(66, "arcsine-stretch", "Arcsine Stretch", "widens the middle and squeezes the sides",
           kGreyOrColour),
    Effect(67, "tone-adjustment", "Tone Adjustment", "lifts light, middle and dark tones apart",
           kPaletteAware, kToneAdjustment, kToneAdjustmentDefaults),
    Effect(68, "edge-fade", "Edge Fade", "fades what is not black towards its edges", kAnyByte,
           kEdgeFade, kEdgeFadeDefaults),
    Effect(70, "white-point", "White Point", "stretches or compresses all tones", kGreyOrColour,
           kWhitePoint, kWhitePointDefaults),
};

} // namespace

std::span<const EffectDescription> EffectTable() {
    return kEffects;
}

const EffectDescription* FindEffect(EffectId id) {
    for (const EffectDescription& effect : kEffects) {
        if (effect.id == id) {
            return &effect;
        }
    }
    return nullptr;
}

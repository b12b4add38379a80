/** @file
 *  Every parameter record. A record is a sequence of little-endian 32-bit fields without gaps,
 *  header, size or version: the effect's number alone tells its layout. Valid C and C++.
 *
 *  Ranges are those that the effect accepts; a value outside gives no picture unless said
 *  otherwise.
 */
#ifndef ZQ_PARAMS_H
#define ZQ_PARAMS_H

#include <stdint.h>

/** Channel numbers of records with a `channel` field. */
enum { ZQ_CHANNEL_RGB = 0, ZQ_CHANNEL_RED = 1, ZQ_CHANNEL_GREEN = 2, ZQ_CHANNEL_BLUE = 3 };

/** Effect 1. A value beyond its range is brought to the nearer end. */
typedef struct BrightnessContrastParams {
    int32_t channel;    /**< 0 RGB, 1 red, 2 green, any other value blue */
    int32_t brightness; /**< -128..127, default 0 */
    int32_t contrast;   /**< -128..127, default 0 */
} BrightnessContrastParams;

/** Effect 2. */
typedef struct HueSaturationParams {
    int32_t hue;        /**< degrees, -180..180, default 0 */
    int32_t saturation; /**< -100..100, default 0; positive takes colour away */
} HueSaturationParams;

/** Effect 3: a tone table from the caller. */
typedef struct ToneTableParams {
    int32_t channel;    /**< 0 RGB, 1 red, 2 green, 3 blue */
    uint8_t table[256]; /**< new value for each old value */
} ToneTableParams;

/** Effect 4. */
typedef struct ColorReductionParams {
    int32_t channel; /**< 0 RGB, 1 red, 2 green, 3 blue */
    int32_t levels;  /**< levels per channel, 2..128, default 8 */
} ColorReductionParams;

/** Effect 7. */
typedef struct ThresholdParams {
    int32_t level; /**< 0..255, default 128 */
} ThresholdParams;

/** Effects 8, 17 and 21. */
typedef struct SquareSizeParams {
    int32_t size; /**< side of the square in pixels, 2..32, default 3 */
} SquareSizeParams;

/** Effect 9. From 4,194,304 on, size and weight together give no picture. */
typedef struct CentreWeightedParams {
    int32_t size;         /**< side of the square in pixels; below 2 counts as 2 */
    int32_t centreWeight; /**< weight of the pixel itself, 0 or more */
} CentreWeightedParams;

/** Effect 18. */
typedef struct UnsharpMaskParams {
    int32_t size;      /**< side of the square in pixels, 2..32, default 3 */
    int32_t effect;    /**< strength in percent, 1..500 (the dialog offers 1..100), default 100 */
    int32_t threshold; /**< 0..255, default 0 */
} UnsharpMaskParams;

/** Effect 19. */
typedef struct LineSharpenParams {
    int32_t axis; /**< 0 along the row, any other value along the column */
} LineSharpenParams;

/** Effect 20. */
typedef struct RankFilterParams {
    int32_t size; /**< side of the square in pixels, 2..32, default 3 */
    int32_t
        takeMaximum; /**< 0 Minimum, any other value Maximum; the caller sets it before the call */
} RankFilterParams;

/** Effect 22. */
typedef struct FindContourParams {
    int32_t mode;      /**< not 0; the dialog sets 1 */
    int32_t channel;   /**< 0 RGB, 1 red, 2 green, 3 blue */
    int32_t threshold; /**< 1..254, default 128 */
} FindContourParams;

/** Effect 25. */
typedef struct UserFilterParams {
    int32_t scale; /**< not 0, default 1 */
    int32_t bias;  /**< default 0 */
    int32_t
        symmetry; /**< of the editor: 0 none, 1 horizontal, 2 vertical, 3 four-way; not read here */
    int32_t cells[25]; /**< row by row from the top left; default 0 but 1 in the centre */
} UserFilterParams;

/** Effect 32. */
typedef struct SketchParams {
    int32_t style;     /**< 1 Crayon, 2 Pencil; default 1, or 2 on a grey document */
    int32_t threshold; /**< 0..254, default 0 */
} SketchParams;

/** Effects 33 to 36, 38 to 41 and 48 to 50. */
typedef struct IntensityParams {
    int32_t intensity; /**< 1..100, default 50; for effect 40 the radius, dialog 1..15, default 2 */
} IntensityParams;

/** Effect 37. Its dialog fills the first word only. */
typedef struct WrinkleParams {
    int32_t intensity;  /**< 1..100, default 50 */
    uint32_t fillColor; /**< byte 0 red, 1 green, 2 blue; the caller's */
} WrinkleParams;

/** Effect 51. */
typedef struct Grid3DParams {
    int32_t size;   /**< 3 Large, 1 Medium, 2 Small; default 3 */
    int32_t height; /**< 0 High, 1 Medium, 2 Low; default 0 */
    int32_t shape;  /**< 0 Regular, 1 Irregular; default 0 */
} Grid3DParams;

/** Effect 52. */
typedef struct MosaicParams {
    int32_t width;  /**< block width in pixels, 1 or more (dialog 2..32), default 5 */
    int32_t height; /**< block height in pixels, 1 or more (dialog 2..32), default 5 */
} MosaicParams;

/** Effect 53. Directions: 1 top left, 2 top, 3 top right, 4 left, 5 right, 6 bottom left, 7 bottom,
 *  8 bottom right. */
typedef struct MotionBlurParams {
    int32_t direction; /**< 1..8, default 4 */
    int32_t speed;     /**< length of the trail in pixels, 2..32, default 10 */
} MotionBlurParams;

/** Effect 54. Directions as in MotionBlurParams. */
typedef struct EmbossParams {
    int32_t direction;  /**< 1..8, default 5 */
    int32_t mode;       /**< 1 Original, 2 Midtone, 3 Gray, 4 Active; default 3 */
    int32_t depth;      /**< distance in pixels, 1..10, default 2 */
    uint32_t backColor; /**< byte 0 red, 1 green, 2 blue; default 0 */
} EmbossParams;

/** Effect 56. */
typedef struct MagicMirrorParams {
    int32_t mapping;    /**< 0 Horizontal, 1 Vertical, 2 Radial, 3 Angular; default 0 */
    uint8_t curve[256]; /**< default entry i = i */
} MagicMirrorParams;

/** Effect 57. */
typedef struct AngularWarpParams {
    int32_t mode;      /**< 1 Spiral, 2 Whirlpool, 3 quarter turn, 4 quarter turn with pull */
    int32_t intensity; /**< 1..100, checked in every mode; modes 3 and 4 do not use it */
} AngularWarpParams;

/** Effect 64. */
typedef struct RadialWarpParams {
    int32_t mode;      /**< 1 Cone, 2 arcsine bulge, 3 Fisheye */
    int32_t intensity; /**< 1..100; mode 2 does not look at it */
} RadialWarpParams;

/** Effect 65. */
typedef struct RibbonParams {
    int32_t frequency;  /**< 0..100, default 25 */
    int32_t amplitude;  /**< 0..100, default 25; a negative one gives no picture */
    uint32_t backColor; /**< byte 0 red, 1 green, 2 blue; default 0 */
} RibbonParams;

/** Effect 67. */
typedef struct ToneAdjustmentParams {
    int32_t highlight; /**< -100..100, default 0 */
    int32_t midtone;   /**< -100..100, default 0 */
    int32_t shadow;    /**< -100..100, default 0 */
    int32_t channel;   /**< 0 RGB, 1 red, 2 green, 3 blue */
} ToneAdjustmentParams;

/** Effect 68. */
typedef struct EdgeFadeParams {
    uint32_t radius; /**< 1..128 */
} EdgeFadeParams;

/** Effect 70. */
typedef struct WhitePointParams {
    int32_t
        gain; /**< above 0: the input that becomes white; 0 or below: minus the output of white */
} WhitePointParams;

#endif

// Ids of the resources and of the dialogs' controls. Read by the compiler and by windres alike.
#pragma once

// Strings: captions of the dialogs that serve several effects.
#define IDS_FILM_GRAIN 4329
#define IDS_SPLASH 4330
#define IDS_RIPPLE 4331
#define IDS_WRINKLE 4332
#define IDS_FISHEYE 4333
#define IDS_CONE 4334
#define IDS_WHIRLPOOL 4335
#define IDS_SPIRAL 4336
#define IDS_ADD_NOISE 4337
#define IDS_MELTING 4338
#define IDS_AUTO_ENHANCE 4339
#define IDS_OIL_PAINTING 4340
#define IDS_AVERAGE 4381
#define IDS_MAXIMUM 4382
#define IDS_MEDIAN 4383
#define IDS_MINIMUM 4384
#define IDS_GAUSSIAN_BLUR 4385

// Strings: the one channel of a grey document; the presets of a curve and the title of its file
// dialog.
#define IDS_GRAY 4341
#define IDS_CURVE_CIRCLE 4371
#define IDS_CURVE_EXPONENT 4372
#define IDS_CURVE_LOGARITHM 4373
#define IDS_CURVE_SINE 4374
#define IDS_CURVE_ARCSINE 4375
#define IDS_CURVE_SQUARE 4376
#define IDS_CURVE_SQUAREROOT 4377
#define IDS_CURVE_RESET 4378
#define IDS_CURVE_SMOOTH 4379
#define IDS_LOAD_CURVE 4380

// Dialogs.
#define IDD_BRIGHTNESS_CONTRAST 4341
#define IDD_HUE_SATURATION 4342
#define IDD_MOSAIC 4343
#define IDD_COLOR_REDUCTION 4344
#define IDD_THRESHOLD 4345
#define IDD_USERS_FILTER 4346
#define IDD_SKETCH 4347
#define IDD_FIND_CONTOUR 4349
#define IDD_EMBOSS 4350
#define IDD_MOTION_BLUR 4351
#define IDD_3D_GRID 4352
#define IDD_SQUARE_SIZE 4353
#define IDD_INTENSITY 4356
#define IDD_RIBBON 4357
#define IDD_MAGIC_MIRROR 4358
#define IDD_TONE_ADJUSTMENT 4359
#define IDD_UNSHARP_MASK 4360
#define IDD_EFFECT_BROWSER 4386

// Bitmaps: the arrows of a direction grid, from the top left to the bottom right.
#define IDB_FIRST_DIRECTION 4362

// Cursors.
#define IDR_PENCIL 4370
#define IDR_OPEN_HAND 4387

// Controls of every dialog, besides OK (1) and Cancel (2).
#define IDC_BEFORE 4327
#define IDC_AFTER 4328
#define IDC_UNNAMED 65535

// Scroll bars and the labels of their values; one number means different things in different
// dialogs.
#define IDC_FIRST_VALUE 4262
#define IDC_FIRST_BAR 4263
#define IDC_SECOND_VALUE 4264
#define IDC_SECOND_BAR 4265
#define IDC_DISTANCE_VALUE 4209
#define IDC_DISTANCE_BAR 4210
#define IDC_WIDTH_BAR 4270
#define IDC_HEIGHT_BAR 4271
#define IDC_WIDTH_VALUE 4272
#define IDC_HEIGHT_VALUE 4273
#define IDC_CONTOUR_VALUE 4279
#define IDC_CONTOUR_BAR 4280
#define IDC_INTENSITY_VALUE 4292
#define IDC_INTENSITY_BAR 4293
#define IDC_FREQUENCY_BAR 4294
#define IDC_FREQUENCY_VALUE 4295
#define IDC_AMPLITUDE_VALUE 4296
#define IDC_AMPLITUDE_BAR 4297
#define IDC_HIGHLIGHT_VALUE 4310
#define IDC_MIDTONE_VALUE 4311
#define IDC_SHADOW_VALUE 4312
#define IDC_HIGHLIGHT_BAR 4313
#define IDC_MIDTONE_BAR 4314
#define IDC_SHADOW_BAR 4315
#define IDC_UNSHARP_SIZE_VALUE 4321
#define IDC_UNSHARP_EFFECT_VALUE 4322
#define IDC_UNSHARP_THRESHOLD_VALUE 4323
#define IDC_UNSHARP_SIZE_BAR 4324
#define IDC_UNSHARP_EFFECT_BAR 4325
#define IDC_UNSHARP_THRESHOLD_BAR 4326

// Buttons and painted controls.
#define IDC_AUTO 4223
#define IDC_TONE_GRAPH 4320

// The channel group.
#define IDC_CHANNEL_RGB 4266
#define IDC_CHANNEL_R 4267
#define IDC_CHANNEL_G 4268
#define IDC_CHANNEL_B 4269

// The grid of directions, from the top left to the bottom right, and Emboss's modes.
#define IDC_FIRST_DIRECTION 4201
#define IDC_LAST_DIRECTION 4208
#define IDC_EMBOSS_ORIGINAL 4211
#define IDC_EMBOSS_MIDTONE 4212
#define IDC_EMBOSS_GRAY 4213
#define IDC_EMBOSS_ACTIVE 4214

// 3D Grid's three groups, Mosaic's check box and Sketch's styles.
#define IDC_GRID_LARGE 4215
#define IDC_GRID_MEDIUM 4216
#define IDC_GRID_SMALL 4217
#define IDC_GRID_HIGH 4218
#define IDC_GRID_MIDDLE 4219
#define IDC_GRID_LOW 4220
#define IDC_GRID_REGULAR 4221
#define IDC_GRID_IRREGULAR 4222
#define IDC_SQUARE 4275
#define IDC_CRAYON 4290
#define IDC_PENCIL 4291

// User's Filter: cells row by row, the other fields, the symmetries and the buttons.
#define IDC_FIRST_CELL 4237
#define IDC_FILTER_SCALE 4281
#define IDC_FILTER_BIAS 4282
#define IDC_SYMMETRY_NONE 4283
#define IDC_SYMMETRY_HORIZONTAL 4284
#define IDC_SYMMETRY_VERTICAL 4285
#define IDC_SYMMETRY_FOUR_WAY 4286
#define IDC_LOAD_FILTER 4287
#define IDC_SAVE_FILTER 4288
#define IDC_RESET_FILTER 4289

// Magic Mirror: the curve, the mappings, the name of the horizontal axis, presets and buttons.
#define IDC_CURVE 4298
#define IDC_MAPPING_HORIZONTAL 4299
#define IDC_MAPPING_VERTICAL 4300
#define IDC_MAPPING_RADIAL 4301
#define IDC_MAPPING_ANGULAR 4302
#define IDC_CURVE_AXIS 4303
#define IDC_CURVE_PRESET 4304
#define IDC_OPERATE 4305
#define IDC_LOAD_CURVE 4306
#define IDC_SAVE_CURVE 4307

// The effect browser.
#define IDC_EFFECT_LABEL 4501
#define IDC_EFFECT_LIST 4502
#define IDC_EFFECT_FRAME 4508

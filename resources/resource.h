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
#define IDD_COLOR_REDUCTION 4344
#define IDD_THRESHOLD 4345
#define IDD_FIND_CONTOUR 4349

// Cursors.
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
#define IDC_CONTOUR_VALUE 4279
#define IDC_CONTOUR_BAR 4280

// The channel group.
#define IDC_CHANNEL_RGB 4266
#define IDC_CHANNEL_R 4267
#define IDC_CHANNEL_G 4268
#define IDC_CHANNEL_B 4269

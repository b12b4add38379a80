// The effects that have a dialog: data only, for the dialogs and for programs that offer them.
#pragma once

#include "platform/types.h"
#include <zq/document.h>
#include <zq/params.h>

#include <span>

// When the caller's buffer is written.
enum class RecordWritten {
    AtOk, // once, after OK
    Live, // the buffer is the dialog's working record: defaults at opening, then every change
};

struct EffectRow {
    EffectId id;
    const char* title; // the dialog's caption
    i32 dialog;        // resource id of its template
    std::size_t recordBytes;
    RecordWritten written;
};

inline constexpr EffectRow kEffectCatalogue[] = {
    {1, "Brightness and Contrast", 4341, sizeof(BrightnessContrastParams), RecordWritten::AtOk},
    {4, "Color Reduction", 4344, sizeof(ColorReductionParams), RecordWritten::Live},
    {7, "Threshold", 4345, sizeof(ThresholdParams), RecordWritten::AtOk},
    {22, "Find Contour", 4349, sizeof(FindContourParams), RecordWritten::Live},
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

// Reads the resources that are linked into a module (.res, 32-bit format) and the dialog templates
// in them. Nothing here trusts the bytes: what does not fit its block is not found.
#pragma once

#include "platform/types.h"
#include "platform/win32.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

// Resource types by number.
constexpr u16 kResourceCursor = 1;
constexpr u16 kResourceBitmap = 2;
constexpr u16 kResourceDialog = 5;
constexpr u16 kResourceString = 6;
constexpr u16 kResourceGroupCursor = 12;

// The bytes of a resource; empty when there is none. They live as long as the module.
ZQ_API std::span<const u8> FindResourceBytes(HINSTANCE module, u16 type, u16 id);

struct DialogItemTemplate {
    DWORD style;
    DWORD exStyle;
    int x, y, width, height; // dialog units
    int id;                  // 65535 for unnamed ones, as GetDlgCtrlID gives it
    std::string className; // "Button", "Edit", "Static", "ListBox", "ScrollBar", "ComboBox" or own
    std::string text;
};

struct DialogTemplate {
    DWORD style;
    DWORD exStyle;
    int x, y, width, height; // dialog units
    std::string title;
    std::string fontFace;
    int fontPoints;
    std::vector<DialogItemTemplate> items;
};

// Plain and extended templates. Nothing when the resource is absent or broken.
ZQ_API std::optional<DialogTemplate> LoadDialogTemplate(HINSTANCE module, u16 id);

// The string resource, in Latin-1; nothing when there is none.
ZQ_API std::optional<std::string> LoadStringResource(HINSTANCE module, u16 id);

struct CursorImage {
    int width, height;
    int hotX, hotY;
    std::vector<u32> argb; // top row first, 0xAARRGGBB
};

// The best image of a cursor group. Nothing when the resource is absent, broken or of a colour
// depth other than 1, 4, 8, 24 or 32 bits.
ZQ_API std::optional<CursorImage> LoadCursorImage(HINSTANCE module, u16 id);

struct BitmapImage {
    int width, height;
    std::vector<u32> rgb; // top row first, 0x00RRGGBB
};

// A bitmap resource. Nothing when it is absent, broken or of another depth than a cursor may have.
ZQ_API std::optional<BitmapImage> LoadBitmapImage(HINSTANCE module, u16 id);

// A painted control whose whole look is in its style: frame, text and what its parent draws in it.
#pragma once

#include "platform/win32.h"

constexpr char kSuperWindowClass[] = "superwnd";

// The height of the text; without any it has the parent's font.
constexpr DWORD kSuperTextHeightMask = 0x3;
constexpr DWORD kSuperText14 = 0x1;
constexpr DWORD kSuperText20 = 0x2;
constexpr DWORD kSuperText40 = 0x3; // in relief

// The place of the text.
constexpr DWORD kSuperTextPlaceMask = 0xC;
constexpr DWORD kSuperTextLeftTop = 0x0;
constexpr DWORD kSuperTextRightTop = 0x4;
constexpr DWORD kSuperTextCentreTop = 0x8;
constexpr DWORD kSuperTextCentreBottom = 0xC;

// The frame: none or a raised one.
constexpr DWORD kSuperFrameMask = 0x70;
constexpr DWORD kSuperFrameRaised = 0x20;

// Frame and text keep away from the borders.
constexpr DWORD kSuperMargin = 0x80;
// The parent draws in the control: when the rest has been painted it is sent kSuperDrawMessage.
constexpr DWORD kSuperParentDraws = 0x100;

// wParam is the control's id, lParam the device context of the painting.
constexpr UINT kSuperDrawMessage = 2024;

// False when the class cannot be registered.
bool RegisterSuperWindow(HINSTANCE instance);
void UnregisterSuperWindow(HINSTANCE instance);

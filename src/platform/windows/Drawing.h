#pragma once

#include <cstdint>

#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"

// Length conversion, fonts, brushes and icons.
namespace platform::windows {

// Converts between twips and pixels at the system DPI, rounding to the nearest integer.
int PixelsFromTwips(std::int32_t twips);
std::int32_t TwipsFromPixels(int pixels);

using OwnedFont = Owned<HFONT, ::DeleteObject>;
using OwnedBrush = Owned<HBRUSH, ::DeleteObject>;
using OwnedIcon = Owned<HICON, ::DestroyIcon>;

// Returns the icon with this resource ID, or null if the program has no such icon.
OwnedIcon ProgramIcon(std::int32_t number);

// Returns the font for the controls of a window.
OwnedFont ControlFont(const Font& font, bool bold);

}  // namespace platform::windows

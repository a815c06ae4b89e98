#pragma once

#include <cstdint>

#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"

// Lengths, fonts, brushes and icons.
namespace platform::windows {

// Lengths in twips as dots at the system's resolution, and back, to the nearest.
int DotsFromTwips(std::int32_t twips);
std::int32_t TwipsFromDots(int dots);

using OwnedFont = Owned<HFONT, ::DeleteObject>;
using OwnedBrush = Owned<HBRUSH, ::DeleteObject>;
using OwnedIcon = Owned<HICON, ::DestroyIcon>;

// The icon of this number in the program's resources; none when there is no such icon.
OwnedIcon ProgramIcon(std::int32_t number);

// What a window's controls are drawn with.
OwnedFont ControlFont(const Font& font, bool bold);

}  // namespace platform::windows

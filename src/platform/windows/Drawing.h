#pragma once

#include <cstdint>
#include <memory>
#include <type_traits>

#include "platform/WindowSystem.h"
#include "platform/windows/Win32.h"

// Lengths, fonts, brushes and icons.
namespace platform::windows {

// Lengths in twips as dots at the system's resolution, and back, to the nearest.
int DotsFromTwips(std::int32_t twips);
std::int32_t TwipsFromDots(int dots);

struct DrawingObjectDelete {
    void operator()(HGDIOBJ object) const { ::DeleteObject(object); }
};

using OwnedFont = std::unique_ptr<std::remove_pointer_t<HFONT>, DrawingObjectDelete>;
using OwnedBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, DrawingObjectDelete>;

struct IconDestroy {
    void operator()(HICON icon) const { ::DestroyIcon(icon); }
};

using OwnedIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDestroy>;

// The icon of this number in the program's resources; none when there is no such icon.
OwnedIcon ProgramIcon(std::int32_t number);

// What a window's controls are drawn with.
OwnedFont ControlFont(const Font& font, bool bold);

}  // namespace platform::windows

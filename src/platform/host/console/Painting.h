#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/host/console/TextScreen.h"

// What windows and message boxes are painted from.
namespace platform::host {

inline constexpr TextStyle ClientStyle{0xD7D7D7, 0x000000};
inline constexpr Colour BlueText = 0xD75F00;
inline constexpr Colour OrangeText = 0x005FD7;
inline constexpr Colour RedText = 0x0000D7;

// What the terminal gives us to paint on, in cells.
struct Canvas {
    int columns;
    int rows;
    bool colours;
};
Canvas ConsoleCanvas();

// A frame on the screen's edge with caption and close box, over what stands there.
void PaintFrame(TextScreen& screen, std::u16string_view caption);

// How a button is called: its number and its caption.
std::u32string ButtonText(std::size_t number, std::u16string_view caption);
// The columns that a button of this text needs at least, with room for the marks of the focus.
int ButtonColumns(std::u32string_view text);
// A button with its shadow in the area's last row; a text that does not fit makes it wider.
void PaintButton(TextScreen& screen, const CellArea& area, std::u32string_view text, bool focused, bool colours);

// The lines below a picture: what the last input brought up (may be empty), what can be typed, and the prompt.
std::string Footer(const std::vector<std::u32string>& notice, std::u16string_view hint, const Canvas& canvas);

// Tells somebody who typed `line` that it means nothing, and that `choices` do. Nothing for an empty line on a
// terminal, where Enter is a wish to see the window anew.
std::vector<std::u32string> UnknownInputNotice(std::u16string_view line, std::u16string_view choices,
                                               const Canvas& canvas);

}  // namespace platform::host

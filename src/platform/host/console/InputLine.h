#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/WindowSystem.h"

// What a line of input asks of the window or message box that it is typed at.
namespace platform::host {

struct ClickInput {
    std::size_t button;  // its place among the buttons, from 0
};
struct ToolTipsInput {};
struct CloseInput {};
struct SizeInput {
    Size outer;
};
struct UnknownInput {};

using Input = std::variant<UnknownInput, ClickInput, ToolTipsInput, CloseInput, SizeInput>;

// `captions` are the buttons' in the order of their numbers (1 and up), empty places for hidden ones. A caption counts
// without regard to case when only one button bears it. No line at all, the end of input, closes. A `sizable` window is
// given its outer size in twips as "9000x6000".
Input InputMeaning(const std::optional<std::u16string>& line,
                   const std::vector<std::optional<std::u16string>>& captions, bool sizable);

}  // namespace platform::host

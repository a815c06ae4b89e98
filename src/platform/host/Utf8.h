#pragma once

#include <optional>
#include <string>
#include <string_view>

// UTF-8, in which the host keeps its files. A surrogate without its partner, which a text of 16-bit characters can
// hold, goes through both ways as three bytes, so that nothing is lost on the road.
namespace platform::host {

std::string Utf8FromText(std::u16string_view text);

// Nothing when the bytes are not UTF-8.
std::optional<std::u16string> TextFromUtf8(std::string_view bytes);

}  // namespace platform::host

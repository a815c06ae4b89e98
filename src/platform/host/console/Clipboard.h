#pragma once

#include <filesystem>
#include <optional>

namespace platform::host {

// The file that holds the text which this process put on the clipboard; nothing when it put none there.
std::optional<std::filesystem::path> ClipboardFile();

}  // namespace platform::host

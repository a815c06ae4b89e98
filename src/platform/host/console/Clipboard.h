#pragma once

#include <filesystem>
#include <optional>

namespace platform::host {

// Returns the file that holds the clipboard, or nothing if this process hasn't put a text on it.
std::optional<std::filesystem::path> ClipboardFile();

}  // namespace platform::host

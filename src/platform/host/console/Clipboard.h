#pragma once

#include <filesystem>
#include <optional>

namespace platform::host {

// Returns the clipboard file, or nothing if this process hasn't copied any text to it.
std::optional<std::filesystem::path> ClipboardFile();

}  // namespace platform::host

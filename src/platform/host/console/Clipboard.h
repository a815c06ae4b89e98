#pragma once

#include <filesystem>

namespace platform::host {

// Returns the path of the clipboard file, or an empty path if this process hasn't copied any text to it.
std::filesystem::path ClipboardFile();

}  // namespace platform::host

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/Handle.h"
#include "platform/host/FileDescriptor.h"

// Files of the host, read whole, and written whole or not at all.
namespace platform::host {

// The content of a file; empty when it cannot be read.
std::string ReadWhole(const std::filesystem::path& path);

// All below give the status of what failed.

// Writes all of `bytes`.
Status WriteAll(const FileDescriptor& file, std::string_view bytes);

// Hands what was written to the disk itself.
Status Synchronise(const FileDescriptor& file);

// Puts the file `from` in the place of `to` in one step. The owner and mode of a file that is there stay.
Status TakePlace(const std::filesystem::path& from, const std::filesystem::path& to);

// Writes `bytes` to a file beside `path`, which then takes its place.
Status WriteWhole(const std::filesystem::path& path, std::string_view bytes);

}  // namespace platform::host

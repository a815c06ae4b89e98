#pragma once

#include <filesystem>
#include <string_view>

#include "platform/Handle.h"
#include "platform/host/FileDescriptor.h"

// Files of the host that are written whole or not at all. All give the status of what failed.
namespace platform::host {

// Writes all of `bytes`.
Status WriteAll(const FileDescriptor& file, std::string_view bytes);

// Hands what was written to the disk itself.
Status Synchronise(const FileDescriptor& file);

// Puts the file `from` in the place of `to` in one step. The owner and mode of a file that is there stay.
Status TakePlace(const std::filesystem::path& from, const std::filesystem::path& to);

// Writes `bytes` to a file beside `path`, which then takes its place.
Status WriteWhole(const std::filesystem::path& path, std::string_view bytes);

}  // namespace platform::host

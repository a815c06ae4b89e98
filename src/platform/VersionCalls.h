#pragma once

#include <cstdint>
#include <span>
#include <string>

// Reads the version resource of programs and libraries.
namespace platform {

// Returns the size in bytes of a file's version resource, or 0 or less if the file has none. `path` is in the 8-bit
// code page.
std::int32_t GetFileVersionInfoSizeA(const std::string& path);

// Copies the version resource to `block`; `handle` is ignored. Returns false if the file has none or can't be read.
bool GetFileVersionInfoA(const std::string& path, std::uint32_t handle, std::span<char> block);

// Returns the part of `block` named `subBlock`, or an empty span if that part is missing. "\" is the name of the fixed
// version information (VS_FIXEDFILEINFO, 52 bytes).
std::span<const char> VerQueryValueA(std::span<const char> block, const std::string& subBlock);

}  // namespace platform

#pragma once

#include <cstdint>
#include <span>
#include <string>

// The version block of a program file or library, read from its resources.
namespace platform {

// The size in bytes of the version information of the file at `path` (8-bit code page), below 1 when it has none.
std::int32_t GetFileVersionInfoSizeA(const std::string& path);

// Fills `block` with it; `handle` is ignored. False when the file has none or cannot be read.
bool GetFileVersionInfoA(const std::string& path, std::uint32_t handle, std::span<char> block);

// The part of `block` that `subBlock` names: "\" gives the fixed version information (VS_FIXEDFILEINFO, 52 bytes).
// Empty when the block does not hold it; it points into `block` otherwise.
std::span<const char> VerQueryValueA(std::span<const char> block, const std::string& subBlock);

}  // namespace platform

#pragma once

#include <string_view>

// Program files and libraries in the Portable Executable format, of 32 and 64 bits, read for their version block. They
// may be damaged: no offset in them leads out of the bytes, and the resource tree is descended by its three levels and
// no further.
namespace platform::host {

// The version block of an image: the resource of type RT_VERSION (16) and number VS_VERSION_INFO (1), in its first
// language. Empty when the image has none or is no such image.
std::string_view VersionBlock(std::string_view image);

// The fixed version information (VS_FIXEDFILEINFO, 52 bytes) in a version block; empty when the block does not hold it.
std::string_view FixedVersion(std::string_view block);

}  // namespace platform::host

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

// Program files and libraries in the Portable Executable format, of 32 and 64 bits, read for their version block. The
// files may be damaged or hostile: every offset is checked against the image, no count in it makes us allocate, and the
// resource tree is descended by its three levels and no further, so that a cycle in it ends too.
namespace platform::host {

// Where an image's bytes come from: reads exactly `bytes` from `offset` on; false when the image does not hold them
// all. Libraries are large and their version block is small, so that an image is never asked for as a whole.
using ImageReader = std::function<bool(std::uint64_t offset, std::span<char> bytes)>;

// The largest version block that is read. The length at a block's own head has 16 bits, so that what is larger is
// damaged.
inline constexpr std::uint32_t VersionBlockLimit = 0xFFFF;

// Size of VS_FIXEDFILEINFO in bytes, and the signature it begins with.
inline constexpr std::size_t FixedVersionSize = 52;
inline constexpr std::uint32_t FixedVersionSignature = 0xFEEF04BD;

// The version block of the image: the resource of type RT_VERSION (16) and number VS_VERSION_INFO (1), in the language
// that a German system takes. Empty when the image has none or is no such image.
std::vector<char> VersionBlock(const ImageReader& read);

// The fixed version information (VS_FIXEDFILEINFO) in a version block; empty when the block does not hold it whole.
std::span<const char> FixedVersion(std::span<const char> block);

}  // namespace platform::host

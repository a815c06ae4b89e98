#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

// The smallest file that Windows and the host's reader take for a program or library with a version block. It holds no
// code. Tests damage it at the places that are named here.

struct SampleImageFacts {
    std::array<std::uint16_t, 4> version;  // as in 1.2.3.4
    std::uint32_t fileType;                // dwFileType: 1 is a program, 2 a library
    bool wide = false;                     // 64-bit
};

// Offsets in the image: the resource tree with its three directories, of which the first one's last entry leads to the
// version, then the leaf and the version block.
inline constexpr std::size_t SampleImageTree = 0x200;
inline constexpr std::uint32_t SampleImageEntries = 4;
inline constexpr std::size_t SampleImageDirectorySize = 16 + SampleImageEntries * 8;
inline constexpr std::size_t SampleImageLeaf = SampleImageTree + 3 * SampleImageDirectorySize;
inline constexpr std::size_t SampleImageBlock = SampleImageLeaf + 16;
inline constexpr std::size_t SampleImageBlockSize = 92;

// The content of such a file, 1024 bytes.
std::string SampleImage(const SampleImageFacts& facts);

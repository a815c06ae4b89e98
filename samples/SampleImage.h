#pragma once

#include <array>
#include <cstdint>
#include <string>

// The smallest file that Windows and the host's reader take for a program or library with a version block. It holds no
// code.

struct SampleImageFacts {
    std::array<std::uint16_t, 4> version;  // as in 1.2.3.4
    std::uint32_t fileType;                // dwFileType: 1 is a program, 2 a library
    bool wide = false;                     // 64-bit
};

// The content of such a file, 1024 bytes.
std::string SampleImage(const SampleImageFacts& facts);

#pragma once

#include <array>
#include <cstdint>
#include <string>

struct SampleImageFacts {
    std::array<std::uint16_t, 4> version;  // 1.2.3.4 is {1, 2, 3, 4}
    std::uint32_t fileType;                // dwFileType: 1 for a program, 2 for a library
    bool wide = false;                     // true for a 64-bit image
};

// Returns the 1024 bytes of a minimal program or library: headers and a version block, but no code.
std::string SampleImage(const SampleImageFacts& facts);

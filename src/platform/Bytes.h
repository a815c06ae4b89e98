#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// Returns the four bytes of a number, least significant first.
inline std::string BytesFromNumber(std::uint32_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(number >> shift & 0xFFU);
    }
    return bytes;
}

// Returns the number stored in up to four bytes, least significant first.
inline std::uint32_t NumberFromBytes(std::string_view bytes) {
    std::uint32_t number = 0;
    for (std::size_t index = bytes.size(); index-- > 0;) {
        number = number << 8U | static_cast<unsigned char>(bytes[index]);
    }
    return number;
}

}  // namespace platform

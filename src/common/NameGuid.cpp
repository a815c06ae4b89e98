#include "common/NameGuid.h"

#include <array>
#include <bit>
#include <cstdint>

namespace {

// RFC 4122, Appendix C: 6ba7b811-9dad-11d1-80b4-00c04fd430c8.
constexpr std::string_view UrlNamespace("\x6b\xa7\xb8\x11\x9d\xad\x11\xd1\x80\xb4\x00\xc0\x4f\xd4\x30\xc8", 16);

using Digest = std::array<std::uint32_t, 5>;

constexpr std::size_t BlockSize = 64;

// The round function and round constant (FIPS 180-4, 4.1.1 and 4.2.1).
std::uint32_t RoundFunction(std::size_t round, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    switch (round / 20) {
        case 0: return ((b & c) | (~b & d)) + 0x5A827999;
        case 1: return (b ^ c ^ d) + 0x6ED9EBA1;
        case 2: return ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDC;
        default: return (b ^ c ^ d) + 0xCA62C1D6;
    }
}

void AddBlock(Digest& digest, std::string_view block) {
    std::array<std::uint32_t, 80> words{};
    for (std::size_t index = 0; index < BlockSize; ++index) {
        words[index / 4] = words[index / 4] << 8 | static_cast<unsigned char>(block[index]);
    }
    for (std::size_t index = BlockSize / 4; index < words.size(); ++index) {
        words[index] = std::rotl(words[index - 3] ^ words[index - 8] ^ words[index - 14] ^ words[index - 16], 1);
    }
    auto [a, b, c, d, e] = digest;
    for (std::size_t round = 0; round < words.size(); ++round) {
        const std::uint32_t next = std::rotl(a, 5) + RoundFunction(round, b, c, d) + e + words[round];
        e = d;
        d = c;
        c = std::rotl(b, 30);
        b = a;
        a = next;
    }
    digest = {digest[0] + a, digest[1] + b, digest[2] + c, digest[3] + d, digest[4] + e};
}

// Returns the SHA-1 hash (FIPS 180-4).
Digest Sha1(std::string bytes) {
    const std::uint64_t bits = bytes.size() * 8;
    bytes += '\x80';
    bytes.resize((bytes.size() + 8 + BlockSize - 1) / BlockSize * BlockSize - 8);
    for (int shift = 56; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(bits >> shift & 0xFF);
    }
    Digest digest{0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
    for (std::size_t offset = 0; offset < bytes.size(); offset += BlockSize) {
        AddBlock(digest, std::string_view(bytes).substr(offset, BlockSize));
    }
    return digest;
}

}  // namespace

Text NameGuid(const std::string& name) {
    Digest digest = Sha1(std::string(UrlNamespace) + name);
    digest[1] = (digest[1] & 0xFFFF0FFF) | 0x5000;      // version 5
    digest[2] = (digest[2] & 0x3FFFFFFF) | 0x80000000;  // RFC 4122 variant
    Text guid = u"{" + HexText(digest[0]) + HexText(digest[1]) + HexText(digest[2]) + HexText(digest[3]) + u"}";
    for (const std::size_t position : {9U, 14U, 19U, 24U}) {
        guid.insert(position, u"-");
    }
    return guid;
}

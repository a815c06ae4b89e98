#include <algorithm>
#include <array>
#include <cstring>

#include "Check.h"
#include "platform/VersionCalls.h"
#include "platform/host/PortableExecutable.h"
#include "samples/SampleImage.h"

using platform::host::FixedVersion;
using platform::host::VersionBlock;

namespace {

constexpr std::size_t EntryOffset = 20;

std::string Library(bool wide = false) {
    return SampleImage({.version = {1, 2, 3, 4}, .fileType = 2, .wide = wide});
}

// The file version's two numbers, 0 without one.
std::array<std::uint32_t, 2> VersionOf(const std::string& image) {
    const std::vector<char> block = VersionBlock([&](std::uint64_t offset, std::span<char> bytes) {
        if (offset > image.size() || bytes.size() > image.size() - offset) {
            return false;
        }
        std::copy_n(image.begin() + static_cast<std::ptrdiff_t>(offset), bytes.size(), bytes.begin());
        return true;
    });
    const std::span<const char> fixed = FixedVersion(block);
    std::array<std::uint32_t, 2> version{};
    if (!fixed.empty()) {
        std::memcpy(version.data(), fixed.data() + 8, sizeof version);
    }
    return version;
}

constexpr std::array<std::uint32_t, 2> Version1234 = {0x00010002, 0x00030004};
constexpr std::array<std::uint32_t, 2> NoVersion = {0, 0};

std::string With(std::string image, std::size_t offset, std::uint32_t number) {
    for (std::size_t index = 0; index < 4; ++index) {
        image[offset + index] = static_cast<char>(number >> 8 * index & 0xFFU);
    }
    return image;
}

}  // namespace

TEST_CASE("An image of either width has its version, and cut anywhere before its block's end it has none") {
    for (const bool wide : {false, true}) {
        const std::string image = Library(wide);
        for (std::size_t size = 0; size < SampleImageBlock + SampleImageBlockSize; ++size) {
            CHECK(VersionOf(image.substr(0, size)) == NoVersion);
        }
        CHECK(VersionOf(image.substr(0, SampleImageBlock + SampleImageBlockSize)) == Version1234);
    }
}

TEST_CASE("Damage on the way to the version hides it") {
    constexpr std::size_t sections = 0x40 + 24 + 224;
    constexpr std::size_t directories = 0x40 + 24 + 96;
    struct {
        const char* what;
        std::size_t offset;
        std::uint32_t number;
    } const damages[] = {
        {"headers beyond the file", 0x3C, 0xFFFFFFF0},
        {"no resources", directories + 16, 0},
        {"a section beyond the file", sections + 20, 0xFFFFFFFF},
        {"another type", SampleImageTree + 16, 15},
        {"a tree that leads to its own root", SampleImageTree + EntryOffset, 0x80000000},
        {"more entries than the file holds", SampleImageTree + 12, 0xFFFFFFFF},
        {"a leaf beyond the section", SampleImageTree + 2 * SampleImageDirectorySize + EntryOffset, 0x7FFFFFFF},
        {"a block beyond the section", SampleImageLeaf, 0xFFFFFFFF},
        {"a block too small for the version", SampleImageLeaf + 4, SampleImageBlockSize - 1},
        {"another signature", SampleImageBlock + 40, 0xFEEF04BC},
        {"a value too short", SampleImageBlock, 51U << 16U | SampleImageBlockSize},
    };
    for (const auto& damage : damages) {
        CAPTURE(damage.what);
        CHECK(VersionOf(With(Library(), damage.offset, damage.number)) == NoVersion);
    }
}

#include <cstring>

#include "Check.h"
#include "platform/VersionCalls.h"
#include "platform/host/drive/PortableExecutable.h"
#include "samples/SampleImage.h"

using platform::host::FixedVersion;
using platform::host::VersionBlock;

namespace {

constexpr std::size_t EntryOffset = 20;

std::string Library(bool wide = false) {
    return SampleImage({.version = {1, 2, 3, 4}, .fileType = 2, .wide = wide});
}

// The file version's four numbers as they stand in the block, in pairs with the low one first; empty without one.
std::string VersionOf(const std::string& image) {
    const std::vector<char> block = VersionBlock([&](std::uint64_t offset, std::span<char> bytes) {
        return offset <= image.size() && image.copy(bytes.data(), bytes.size(), offset) == bytes.size();
    });
    const std::span<const char> fixed = FixedVersion(block);
    return fixed.empty() ? std::string() : std::string(fixed.data() + 8, 8);
}

std::string With(std::string image, std::size_t offset, std::uint32_t number) {
    std::memcpy(image.data() + offset, &number, sizeof number);
    return image;
}

}  // namespace

TEST_CASE("An image of either width has its version, and cut anywhere before its block's end it has none") {
    for (const bool wide : {false, true}) {
        const std::string image = Library(wide);
        for (std::size_t size = 0; size < SampleImageBlock + SampleImageBlockSize; ++size) {
            CHECK(VersionOf(image.substr(0, size)).empty());
        }
        CHECK(VersionOf(image.substr(0, SampleImageBlock + SampleImageBlockSize)) ==
              std::string("\2\0\1\0\4\0\3\0", 8));
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
        {"a block larger than the section", SampleImageLeaf + 4, 0x1000},
        {"a block too small for the version", SampleImageLeaf + 4, SampleImageBlockSize - 1},
        {"another signature", SampleImageBlock + 40, 0xFEEF04BC},
        {"a value too short", SampleImageBlock, 51U << 16U | SampleImageBlockSize},
    };
    for (const auto& damage : damages) {
        CAPTURE(damage.what);
        CHECK(VersionOf(With(Library(), damage.offset, damage.number) + std::string(0x2000, '\0')).empty());
    }
}

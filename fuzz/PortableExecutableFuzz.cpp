#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "platform/host/drive/PortableExecutable.h"

// The version block of any bytes, and any bytes taken for a block.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const char> image(reinterpret_cast<const char*>(data), size);
    std::size_t reads = 0;
    const std::vector<char> block = platform::host::VersionBlock([&](std::uint64_t offset, std::span<char> bytes) {
        ++reads;
        if (offset > image.size() || bytes.size() > image.size() - offset) {
            return false;
        }
        std::ranges::copy(image.subspan(offset, bytes.size()), bytes.begin());
        return true;
    });
    // Five for the headers, one for each section; in the tree six searches by halving, each with the directory's counts
    // and up to 17 of its entries; then the counts and the first entry, the leaf and the block.
    constexpr std::size_t mostReads = 5 + 0xFFFF + 6 * (1 + 17) + 4;
    if (block.size() > platform::host::VersionBlockLimit || reads > mostReads) {
        std::abort();
    }
    for (const std::span<const char> candidate : {std::span<const char>(block), image}) {
        const std::span<const char> fixed = platform::host::FixedVersion(candidate);
        if (!fixed.empty() && fixed.size() != platform::host::FixedVersionSize) {
            std::abort();
        }
    }
    return 0;
}

#include "Check.h"
#include "platform/VersionCalls.h"
#include "platform/host/drive/PortableExecutable.h"
#include "samples/SampleImage.h"

using platform::host::FixedVersion;
using platform::host::VersionBlock;

namespace {

// The file version's four numbers as they stand in the block, in pairs with the low one first; empty without one.
std::string VersionOf(std::string_view image) {
    const std::string_view fixed = FixedVersion(VersionBlock(image));
    return fixed.empty() ? std::string() : std::string(fixed.substr(8, 8));
}

}  // namespace

TEST_CASE("An image of either width has its version, and cut anywhere before its block's end it has none") {
    for (const bool wide : {false, true}) {
        std::string image = SampleImage({.version = {1, 2, 3, 4}, .fileType = 2, .wide = wide});
        image.resize(SampleImageBlock + SampleImageBlockSize);
        CHECK(VersionOf(image) == std::string("\2\0\1\0\4\0\3\0", 8));
        while (!image.empty()) {
            image.pop_back();
            CHECK(VersionOf(image).empty());
        }
    }
}

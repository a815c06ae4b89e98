#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/host/drive/PortableExecutable.h"

// The version block of any bytes, and any bytes taken for a block. What is found lies within them: every byte of it can
// be read, which the sanitizers watch.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view image(reinterpret_cast<const char*>(data), size);
    const std::string block(platform::host::VersionBlock(image));
    for (const std::string_view candidate : {std::string_view(block), image}) {
        const std::string fixed(platform::host::FixedVersion(candidate));
        if (!fixed.empty() && fixed.size() != 52) {
            std::abort();
        }
    }
    return 0;
}

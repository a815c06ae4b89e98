#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

#include "platform/VersionCalls.h"

// Reads paths from standard input, one to a line, and prints each with its file's version: "path<TAB>1.2.3.4", or
// "path<TAB>none". Built for both platforms, so that what the host reads can be compared with what Windows says.

namespace {

std::string FileVersion(const std::string& path) {
    const std::int32_t size = platform::GetFileVersionInfoSizeA(path);
    std::vector<char> block(size < 1 ? 0 : static_cast<std::size_t>(size));
    if (block.empty() || !platform::GetFileVersionInfoA(path, 0, block)) {
        return "none";
    }
    const std::span<const char> fixed = platform::VerQueryValueA(block, "\\");
    if (fixed.size() < 16) {
        return "none";
    }
    // The four numbers are 16-bit words, the higher of each pair behind the lower one.
    std::string version;
    for (const std::size_t offset : {10U, 8U, 14U, 12U}) {
        const int low = static_cast<unsigned char>(fixed[offset]);
        const int high = static_cast<unsigned char>(fixed[offset + 1]);
        version += (version.empty() ? "" : ".") + std::to_string(high * 256 + low);
    }
    return version;
}

}  // namespace

int main() {
    for (std::string path; std::getline(std::cin, path);) {
        if (!path.empty() && path.back() == '\r') {
            path.pop_back();
        }
        std::cout << path << '\t' << FileVersion(path) << '\n';
    }
}

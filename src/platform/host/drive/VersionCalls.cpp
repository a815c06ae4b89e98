#include "platform/VersionCalls.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "platform/host/drive/Drive.h"
#include "platform/host/drive/PortableExecutable.h"

namespace platform {

namespace {

std::string ReadVersionBlock(const std::string& path) {
    const host::ResolvedPath place = host::ResolvePath(path);
    if (!place.IsFile()) {
        return {};
    }
    std::ifstream file(place.path, std::ios::binary);
    const std::string image(std::istreambuf_iterator<char>(file), {});
    return std::string(host::VersionBlock(image));
}

}  // namespace

std::int32_t GetFileVersionInfoSizeA(const std::string& path) {
    return static_cast<std::int32_t>(ReadVersionBlock(path).size());
}

bool GetFileVersionInfoA(const std::string& path, std::uint32_t /*handle*/, std::span<char> block) {
    const std::string content = ReadVersionBlock(path);
    std::ranges::copy(content.substr(0, block.size()), block.begin());
    return !content.empty();
}

std::span<const char> VerQueryValueA(std::span<const char> block, const std::string& subBlock) {
    return subBlock == "\\" ? host::FixedVersion({block.data(), block.size()}) : std::span<const char>();
}

}  // namespace platform

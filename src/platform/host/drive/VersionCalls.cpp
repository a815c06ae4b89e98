// Version resources on the host. Finds a file's version block by its key instead of parsing the resource directory.
#include "platform/VersionCalls.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "platform/Bytes.h"
#include "platform/host/drive/Drive.h"

namespace platform {

namespace {

// A version block begins with three two-byte fields: its length, the length of its value and the value's type. Next
// come the key in UTF-16 with its terminator, two bytes of padding and the value (VS_FIXEDFILEINFO).
using namespace std::string_view_literals;
constexpr std::string_view Key = "V\0S\0_\0V\0E\0R\0S\0I\0O\0N\0_\0I\0N\0F\0O\0\0\0"sv;
constexpr std::string_view FixedInfoSignature = "\xBD\x04\xEF\xFE";
constexpr std::size_t KeyOffset = 6;
constexpr std::size_t FixedInfoOffset = 40;
constexpr std::size_t FixedInfoSize = 52;

std::string_view FixedInfo(std::string_view block) {
    const std::string_view info = block.substr(std::min(FixedInfoOffset, block.size()), FixedInfoSize);
    return info.size() == FixedInfoSize && info.starts_with(FixedInfoSignature) ? info : std::string_view();
}

std::string_view FindVersionBlock(std::string_view image) {
    std::size_t key = image.starts_with("MZ") ? image.find(Key, KeyOffset) : std::string_view::npos;
    for (; key != std::string_view::npos; key = image.find(Key, key + 1)) {
        const std::string_view rest = image.substr(key - KeyOffset);
        const std::string_view block = rest.substr(0, NumberFromBytes(rest.substr(0, 2)));
        if (!FixedInfo(block).empty()) {
            return block;
        }
    }
    return {};
}

std::string ReadVersionBlock(const std::string& path) {
    const host::ResolvedPath resolved = host::ResolvePath(path);
    if (!resolved.IsFile()) {
        return {};
    }
    std::ifstream file(resolved.path, std::ios::binary);
    const std::string image(std::istreambuf_iterator<char>(file), {});
    return std::string(FindVersionBlock(image));
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
    return subBlock == "\\" ? FixedInfo({block.data(), block.size()}) : std::span<const char>();
}

}  // namespace platform

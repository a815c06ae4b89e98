#include "platform/VersionCalls.h"

#include <cstdint>
#include <cstring>

#include "platform/windows/SystemFolder.h"

namespace platform {

namespace {

// True if the block isn't shorter than the length stored in its first two bytes. VerQueryValueA would read past the end
// of a shorter block.
bool IsWhole(std::span<const char> block) {
    WORD length = 0;
    if (block.size() < sizeof length) {
        return false;
    }
    std::memcpy(&length, block.data(), sizeof length);
    return length != 0 && length <= block.size();
}

}  // namespace

std::int32_t GetFileVersionInfoSizeA(const std::string& path) {
    DWORD handle = 0;
    return static_cast<std::int32_t>(
        windows::VersionCall<decltype(::GetFileVersionInfoSizeA)>("GetFileVersionInfoSizeA", path.c_str(), &handle));
}

bool GetFileVersionInfoA(const std::string& path, std::uint32_t handle, std::span<char> block) {
    return windows::VersionCall<decltype(::GetFileVersionInfoA)>(
               "GetFileVersionInfoA", path.c_str(), handle, static_cast<DWORD>(block.size()), block.data()) != FALSE;
}

std::span<const char> VerQueryValueA(std::span<const char> block, const std::string& subBlock) {
    void* content = nullptr;
    UINT size = 0;
    if (!IsWhole(block) || !windows::VersionCall<decltype(::VerQueryValueA)>("VerQueryValueA", block.data(),
                                                                             subBlock.c_str(), &content, &size)) {
        return {};
    }
    const std::uintptr_t offset =
        reinterpret_cast<std::uintptr_t>(content) - reinterpret_cast<std::uintptr_t>(block.data());
    const bool inside = offset <= block.size() && size <= block.size() - offset;
    return inside ? block.subspan(offset, size) : std::span<const char>();
}

}  // namespace platform

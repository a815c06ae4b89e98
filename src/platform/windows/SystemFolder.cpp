#include "platform/windows/SystemFolder.h"

#include <array>

namespace platform::windows {

std::string SystemFolder() {
    std::array<char, MAX_PATH> folder{};
    ::GetSystemDirectoryA(folder.data(), MAX_PATH);
    return folder.data();
}

void LibrarySearchRestrict() {
    constexpr DWORD systemFolder = 0x800;  // LOAD_LIBRARY_SEARCH_SYSTEM32
    const auto setDirectories = reinterpret_cast<BOOL(WINAPI*)(DWORD)>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories")));
    if (setDirectories != nullptr) {
        setDirectories(systemFolder);
    }
}

FARPROC VersionFunction(const char* name) {
    static const HMODULE library =
        ::LoadLibraryExA((SystemFolder() + "\\version.dll").c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return library == nullptr ? nullptr : ::GetProcAddress(library, name);
}

}  // namespace platform::windows

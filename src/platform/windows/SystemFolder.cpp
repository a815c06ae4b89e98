#include "platform/windows/SystemFolder.h"

#include <array>

namespace platform::windows {

std::string SystemFolder() {
    std::array<char, MAX_PATH> folder{};
    ::GetSystemDirectoryA(folder.data(), MAX_PATH);
    return folder.data();
}

// Setting any directory removes the current directory from the search order. An empty string would do on Windows, but
// not under Wine.
void ProtectLibrarySearch() {
    ::SetDllDirectoryA(SystemFolder().c_str());
    constexpr int imageLoadPolicy = 10;  // ProcessImageLoadPolicy
    DWORD preferSystemFolder = 4;        // PreferSystem32Images
    const auto setPolicy = reinterpret_cast<BOOL(WINAPI*)(int, void*, SIZE_T)>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "SetProcessMitigationPolicy")));
    if (setPolicy != nullptr) {
        setPolicy(imageLoadPolicy, &preferSystemFolder, sizeof preferSystemFolder);
    }
}

FARPROC VersionFunction(const char* name) {
    static const HMODULE library =
        ::LoadLibraryExA((SystemFolder() + "\\version.dll").c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return library == nullptr ? nullptr : ::GetProcAddress(library, name);
}

}  // namespace platform::windows

#include "platform/windows/SystemFolder.h"

#include <array>

namespace platform::windows {

std::string SystemFolder() {
    std::array<char, MAX_PATH> folder{};
    ::GetSystemDirectoryA(folder.data(), MAX_PATH);
    return folder.data();
}

FARPROC VersionFunction(const char* name) {
    static const HMODULE library =
        ::LoadLibraryExA((SystemFolder() + "\\version.dll").c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return library == nullptr ? nullptr : ::GetProcAddress(library, name);
}

}  // namespace platform::windows

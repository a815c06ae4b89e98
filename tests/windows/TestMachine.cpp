#include "TestMachine.h"

#include "platform/windows/Win32.h"
#include "windows/OwnRegistry.h"

// The running system, with a folder of its own and, where a test runs the code in its own process, a registry of its
// own.

void TestMachine::Make() {
    static int machines = 0;
    Unmake();
    OwnRegistryMake();
    folder_ = std::filesystem::temp_directory_path() /
              ("vtv4v-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++machines));
    std::filesystem::remove_all(folder_);
    Environment("HOMEDRIVE", folder_.root_name().string());
    Environment("HOMEPATH", (folder_.root_directory() / folder_.relative_path()).string());
}

void TestMachine::Unmake() {
    OwnRegistryRemove();
}

std::optional<std::string> ProcessVariable(const std::string& name) {
    std::string value(32767, '\0');  // the most that a variable can hold
    ::SetLastError(ERROR_SUCCESS);
    const DWORD length = ::GetEnvironmentVariableA(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && ::GetLastError() == ERROR_ENVVAR_NOT_FOUND) {
        return {};
    }
    return value.substr(0, length);
}

void ProcessVariable(const std::string& name, const std::optional<std::string>& value) {
    ::SetEnvironmentVariableA(name.c_str(), value ? value->c_str() : nullptr);
}

std::filesystem::path OnDisk(const std::string& path) {
    return path;
}

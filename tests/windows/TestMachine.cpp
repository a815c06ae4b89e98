#include "TestMachine.h"

#include <doctest/doctest.h>

#include <cstdlib>

#include "platform/windows/Win32.h"

// The machine is the running system with a temporary folder. The predefined registry keys of this process are
// redirected to empty keys below HKEY_CURRENT_USER, so the tests need no administrator rights.

namespace {

// HKEY_CURRENT_USER must be redirected last, since the target keys are created below it.
const HKEY Roots[] = {HKEY_CLASSES_ROOT, HKEY_LOCAL_MACHINE, HKEY_USERS, HKEY_CURRENT_USER};

const std::string UniqueName = "vtv4v-tests-" + std::to_string(::GetCurrentProcessId());

}  // namespace

void TestMachine::SetUp() {
    for (const HKEY root : Roots) {
        const std::string name = std::to_string(reinterpret_cast<std::intptr_t>(root));
        HKEY own = nullptr;
        REQUIRE(::RegCreateKeyA(HKEY_CURRENT_USER, ("Software\\" + UniqueName + "\\" + name).c_str(), &own) ==
                ERROR_SUCCESS);
        REQUIRE(::RegOverridePredefKey(root, own) == ERROR_SUCCESS);
        ::RegCloseKey(own);
    }
    folder_ = std::filesystem::temp_directory_path() / UniqueName;
    std::filesystem::remove_all(folder_);
    Environment("HOMEDRIVE", folder_.root_name().string());
    Environment("HOMEPATH", (folder_.root_directory() / folder_.relative_path()).string());
}

void TestMachine::TearDown() {
    for (const HKEY root : Roots) {
        ::RegOverridePredefKey(root, nullptr);
    }
    ::RegDeleteTreeA(HKEY_CURRENT_USER, ("Software\\" + UniqueName).c_str());
}

void ProcessVariable(const std::string& name, const std::optional<std::string>& value) {
    ::_putenv_s(name.c_str(), value.value_or("").c_str());
}

std::filesystem::path OnDisk(const std::string& path) {
    return path;
}

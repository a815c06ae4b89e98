#include "TestMachine.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "platform/windows/Win32.h"

// The running system with the parts that the program touches emptied before a case and after it. Run it where nothing
// of the suite is installed.

namespace {

constexpr char ProductsKey[] = "Software\\Vandrel\\Tallora";

void ProductsDelete() {
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        const LSTATUS status = ::RegDeleteTreeA(root, ProductsKey);
        REQUIRE((status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND));
    }
}

std::optional<std::string> EnvironmentGet(const std::string& name) {
    std::string value(32767, '\0');  // the most that a variable can hold
    ::SetLastError(ERROR_SUCCESS);
    const DWORD length = ::GetEnvironmentVariableA(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && ::GetLastError() == ERROR_ENVVAR_NOT_FOUND) {
        return {};
    }
    return value.substr(0, length);
}

void EnvironmentSet(const std::string& name, const std::optional<std::string>& value) {
    ::SetEnvironmentVariableA(name.c_str(), value ? value->c_str() : nullptr);
}

}  // namespace

struct TestMachine::State {
    std::filesystem::path home;
    std::map<std::string, std::optional<std::string>> earlier;
};

TestMachine::TestMachine() : state_(new State) {
    static int machines = 0;
    ProductsDelete();
    state_->home = std::filesystem::temp_directory_path() /
                   ("vtv4v-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++machines));
    std::filesystem::remove_all(state_->home);
    std::filesystem::create_directories(state_->home / "Eigene Dateien");
    Environment("HOMEDRIVE", state_->home.root_name().string());
    Environment("HOMEPATH", (state_->home.root_directory() / state_->home.relative_path()).string());
    Environment("USERNAME", "hugo");
    Environment("USERDOMAIN", "OFFICE");
    Environment("USERDNSDOMAIN", "office.example");
}

TestMachine::~TestMachine() {
    for (const auto& [name, value] : state_->earlier) {
        EnvironmentSet(name, value);
    }
    std::error_code ignored;
    std::filesystem::remove_all(state_->home, ignored);
    ProductsDelete();
    delete state_;
}

std::string TestMachine::ControlFile() const {
    return (state_->home / "Eigene Dateien" / "vtv4v.txt").string();
}

void TestMachine::Environment(const std::string& name, const std::optional<std::string>& value) {
    state_->earlier.try_emplace(name, EnvironmentGet(name));
    EnvironmentSet(name, value);
}

void FileContent(const std::string& path, const std::string& bytes) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    REQUIRE(file.flush());
}

std::optional<std::string> FileContent(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return {};
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

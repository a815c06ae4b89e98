#include <doctest/doctest.h>

#include <array>
#include <filesystem>

#include "TestMachine.h"
#include "platform/ComponentCalls.h"
#include "platform/Process.h"
#include "platform/ShellCalls.h"
#include "platform/windows/SystemFolder.h"

using platform::windows::SystemFolder;

namespace {

// A machine whose folder for documents is the present one, and holds a copy of a file by another name.
class Planted : public TestMachine {
public:
    Planted(const std::filesystem::path& original, const std::string& name) {
        const std::filesystem::path folder = std::filesystem::path(ControlFile()).parent_path();
        std::filesystem::copy_file(original, folder / name);
        std::filesystem::current_path(folder);
    }
    ~Planted() { std::filesystem::current_path(earlier_); }
    Planted(const Planted&) = delete;
    Planted& operator=(const Planted&) = delete;

private:
    std::filesystem::path earlier_ = std::filesystem::current_path();
};

std::filesystem::path ThisProgram() {
    std::array<char, MAX_PATH> path{};
    ::GetModuleFileNameA(nullptr, path.data(), MAX_PATH);
    return path.data();
}

bool Loads(const char* library) {
    return platform::windows::Owned<HMODULE, ::FreeLibrary>(::LoadLibraryA(library)) != nullptr;
}

}  // namespace

TEST_CASE("A program that is named without a folder is the system's, whatever bears its name here") {
    // The program itself, which ends with 0 when it is started without its option.
    const Planted machine(ThisProgram().parent_path().parent_path() / "vtv4v.exe", "MsiExec.exe");
    for (const std::string name : {"MsiExec.exe", "MsiExec", "\"MsiExec.exe\""}) {
        CAPTURE(name);
        std::int32_t processId = 0;
        REQUIRE(platform::StartCommandLine(name + " /quiet /x{00000000-0000-0000-0000-000000000000}", 0, processId) ==
                platform::StatusSuccess);
        const platform::windows::Owned<HANDLE, ::CloseHandle> process(
            ::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(processId)));
        CHECK(::WaitForSingleObject(process.get(), 30000) == WAIT_OBJECT_0);
        DWORD code = 0;
        CHECK(::GetExitCodeProcess(process.get(), &code));
        CHECK(code == ERROR_UNKNOWN_PRODUCT);
    }
}

TEST_CASE("A library that is named without a folder is not looked for here") {
    const Planted machine(ThisProgram(), "vtv4v-planted.dll");
    CHECK(Loads("vtv4v-planted.dll"));
    platform::ProcessStart(0, nullptr);
    CHECK_FALSE(Loads("vtv4v-planted.dll"));
    CHECK(Loads("wsock32.dll"));
}

TEST_CASE("A library whose function was called stays loaded") {
    const std::string library = SystemFolder() + "\\wsock32.dll";
    REQUIRE(::GetModuleHandleA(library.c_str()) == nullptr);
    std::int32_t result = 0;
    CHECK(platform::CallTextFunction(library, "inet_addr", "1.2.3.4", result) == platform::StatusSuccess);
    CHECK(result == 0x04030201);
    CHECK(::GetModuleHandleA(library.c_str()) != nullptr);
    CHECK(platform::CallTextFunction(library, "none", "", result) == 127);
}

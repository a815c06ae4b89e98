#include <doctest/doctest.h>

#include <filesystem>

#include "TestMachine.h"
#include "platform/ComponentCalls.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "platform/ShellCalls.h"
#include "platform/windows/SystemFolder.h"

using platform::windows::Owned;

TEST_CASE_FIXTURE(TestMachine, "Bare program and library names resolve only to the system folder") {
    const std::filesystem::path folder = platform::TextFromAnsi(platform::ProgramFolder());
    const std::filesystem::path program = folder / "../vtv4v.exe";  // without its option, exits with 0
    std::filesystem::current_path(std::filesystem::path(ControlFile()).parent_path());
    std::filesystem::copy_file(program, "MsiExec.exe");
    std::filesystem::copy_file(program, "vtv4v-planted.dll");
    for (const std::string name : {"MsiExec.exe", "MsiExec", "\"MsiExec.exe\""}) {
        std::int32_t id = 0;
        REQUIRE(platform::StartCommandLine(name + " /quiet /x{00000000-0000-0000-0000-000000000000}", 0, id) == 0);
        const Owned<HANDLE, ::CloseHandle> process(
            ::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(id)));
        ::WaitForSingleObject(process.get(), 30000);
        DWORD code = 0;
        CHECK(::GetExitCodeProcess(process.get(), &code));
        CHECK(code == ERROR_UNKNOWN_PRODUCT);
    }
    const auto loads = [](const char* library) {
        return Owned<HMODULE, ::FreeLibrary>(::LoadLibraryA(library)) != nullptr;
    };
    CHECK(loads("vtv4v-planted.dll"));
    platform::ProcessStart(0, nullptr);
    CHECK_FALSE(loads("vtv4v-planted.dll"));
    CHECK(loads("wsock32.dll"));
    std::filesystem::current_path(folder);
}

TEST_CASE("CallTextFunction leaves the library loaded") {
    const std::string library = platform::windows::SystemFolder() + "\\wsock32.dll";
    REQUIRE(::GetModuleHandleA(library.c_str()) == nullptr);
    std::int32_t result = 0;
    CHECK(platform::CallTextFunction(library, "inet_addr", "1.2.3.4", result) == platform::StatusSuccess);
    CHECK(result == 0x04030201);
    CHECK(::GetModuleHandleA(library.c_str()) != nullptr);
    CHECK(platform::CallTextFunction(library, "none", "", result) == 127);
}

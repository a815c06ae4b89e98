#include <doctest/doctest.h>

#include "TestMachine.h"
#include "common/TextFile.h"
#include "platform/FileCalls.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "platform/ShellCalls.h"
#include "platform/windows/Win32.h"
#include "version/modVTV4Version.h"

// clang-format off
#include <sddl.h>  // requires windows.h
// clang-format on

using platform::windows::Owned;

namespace {

const std::string ChildContent(300000, 'a');

std::string AccessControlList(const std::string& path) {
    std::string descriptor(4096, '\0');
    DWORD size = 0;
    REQUIRE(::GetFileSecurityA(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), 4096, &size));
    return descriptor.substr(0, size);
}

}  // namespace

TEST_CASE_FIXTURE(TestMachine, "An overwritten file keeps its access control list and stays hidden") {
    FileContent(ControlFile(), "old");
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    REQUIRE(::ConvertStringSecurityDescriptorToSecurityDescriptorA("D:P(A;;FA;;;WD)", SDDL_REVISION_1, &descriptor,
                                                                   nullptr));
    const Owned<PSECURITY_DESCRIPTOR, ::LocalFree> owner(descriptor);
    const std::string inherited = AccessControlList(ControlFile());
    REQUIRE(::SetFileSecurityA(ControlFile().c_str(), DACL_SECURITY_INFORMATION, descriptor));
    REQUIRE(::SetFileAttributesA(ControlFile().c_str(), FILE_ATTRIBUTE_HIDDEN));
    const std::string changed = AccessControlList(ControlFile());
    CHECK(changed != inherited);
    WriteBytes(platform::TextFromAnsi(ControlFile()), "new", true);
    CHECK(FileContent(ControlFile()) == "new");
    CHECK(AccessControlList(ControlFile()) == changed);
    CHECK((::GetFileAttributesA(ControlFile().c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0);
}

// Restarts this program to run only the test case below, which is otherwise skipped.
TEST_CASE_FIXTURE(TestMachine, "A process killed while replacing a file leaves a complete file") {
    const std::string command = "\"" + platform::ProgramFolder() + "\\vtv4v_tests.exe\" --no-skip --test-case=Child*";
    for (DWORD delay = 0; delay < 20; ++delay) {
        std::filesystem::remove(ControlFile());
        std::int32_t processId = 0;
        REQUIRE(platform::StartCommandLine(command, 0, processId) == 0);
        const Owned<HANDLE, ::CloseHandle> process(
            ::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, static_cast<DWORD>(processId)));
        while (!platform::IsFile(ControlFile()) && ::WaitForSingleObject(process.get(), 1) == WAIT_TIMEOUT) {
        }
        ::Sleep(delay);
        ::TerminateProcess(process.get(), 0);
        ::WaitForSingleObject(process.get(), INFINITE);
        CHECK((FileContent(ControlFile()) == ChildContent));  // too long to print
    }
}

TEST_CASE("Child process of the kill test" * doctest::skip()) {
    for (;;) {
        WriteBytes(ControlFilePathGet(), ChildContent, true);
    }
}

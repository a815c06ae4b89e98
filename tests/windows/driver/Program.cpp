#include "Program.h"

#include <doctest/doctest.h>
// Behind windows.h, which it needs.
#include <winternl.h>

#include <algorithm>
#include <array>

#include "windows/OwnRegistry.h"

void OwnRegistryMake() {
}

void OwnRegistryRemove() {
}

namespace {

std::size_t Handles(DWORD process) {
    constexpr auto allHandles = static_cast<SYSTEM_INFORMATION_CLASS>(16);  // SystemHandleInformation
    std::vector<char> buffer(1 << 20);
    ::NtQuerySystemInformation(allHandles, buffer.data(), static_cast<ULONG>(buffer.size()), nullptr);
    const auto& table = *reinterpret_cast<const SYSTEM_HANDLE_INFORMATION*>(buffer.data());
    return static_cast<std::size_t>(std::count_if(table.Handle, table.Handle + table.Count,
                                                  [&](const auto& entry) { return entry.OwnerPid == process; }));
}

std::size_t DrawingObjects(HANDLE process) {
    constexpr std::size_t tableAddress = sizeof(void*) == 8 ? 0xF8 : 0x94;  // GdiSharedHandleTable
    std::vector<std::array<char, 24>> table(16384);
    PROCESS_BASIC_INFORMATION basic{};
    const char* address = nullptr;
    ::NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr);
    ::ReadProcessMemory(process, reinterpret_cast<const char*>(basic.PebBaseAddress) + tableAddress, &address,
                        sizeof address, nullptr);
    ::ReadProcessMemory(process, address, table.data(), table.size() * sizeof table[0], nullptr);
    return std::erase_if(table, [](const auto& entry) { return entry[14] != 0; });  // the type, none in a free entry
}

}  // namespace

std::string ProgramPath() {
    char driver[MAX_PATH];
    std::string path(driver, ::GetModuleFileNameA(nullptr, driver, MAX_PATH));
    path.resize(path.rfind('\\'));
    return path.substr(0, path.rfind('\\')) + "\\vtv4v.exe";
}

std::string Start(const std::string& tail) {
    return "\"" + ProgramPath() + "\"" + tail;
}

Program::Program(const std::string& commandLine, const std::map<std::string, std::string>& environment, WORD show) {
    for (const auto& [name, value] : environment) {
        machine.Environment(name, value);
    }
    ::SetProcessDPIAware();  // places and pictures are in the screen's own dots
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = show;
    std::string buffer = commandLine;
    REQUIRE(
        ::CreateProcessA(nullptr, buffer.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process_));
}

Program::~Program() {
    ::TerminateProcess(process_.hProcess, 1);
    ::WaitForSingleObject(process_.hProcess, INFINITE);
    ::CloseHandle(process_.hProcess);
    ::CloseHandle(process_.hThread);
}

bool Program::EndedWell() const {
    DWORD code = STILL_ACTIVE;
    return Eventually([&] { return ::GetExitCodeProcess(process_.hProcess, &code) && code != STILL_ACTIVE; }) &&
           code == 0;
}

// Wine does not count a process' objects for those who ask, but it shows the tables that they stand in.
HeldObjects Program::Objects() const {
    std::size_t windows = 0;
    for (const HWND window : TopWindows(process_.dwThreadId)) {
        windows += 1 + Parts(window).size();
    }
    return {Handles(process_.dwProcessId), DrawingObjects(process_.hProcess), windows};
}

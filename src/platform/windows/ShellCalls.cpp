#include "platform/ShellCalls.h"

#include <array>

#include "platform/windows/Apartment.h"
#include "platform/windows/SystemFolder.h"

namespace platform {

namespace {

// Returns the full path of a command line's program if the program is a bare name and exists in the system folder.
// Otherwise returns an empty string.
std::string SystemProgram(const std::string& command) {
    const bool quoted = command.starts_with('"');
    const std::size_t begin = quoted ? 1 : 0;
    const std::string name = command.substr(begin, command.find_first_of(quoted ? "\"" : " \t", begin) - begin);
    std::array<char, MAX_PATH> path{};
    if (name.find_first_of("\\/:") == std::string::npos) {
        ::SearchPathA(windows::SystemFolder().c_str(), name.c_str(), ".exe", MAX_PATH, path.data(), nullptr);
    }
    return path.data();
}

}  // namespace

std::int32_t ShellExecuteA(Handle owner, const std::string& verb, const std::string& file,
                           const std::string& parameters, const std::string& directory, std::int32_t show) {
    windows::EnterApartment();
    return windows::HandleOf(::ShellExecuteA(windows::SystemHandleOf<HWND>(owner), verb.c_str(), file.c_str(),
                                             parameters.c_str(), directory.c_str(), show));
}

Status StartCommandLine(const std::string& command, std::int32_t windowStyle, std::int32_t& processId) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(windowStyle);
    PROCESS_INFORMATION started{};
    const std::string program = SystemProgram(command);
    std::string commandBuffer = command;
    if (!::CreateProcessA(program.empty() ? nullptr : program.c_str(), commandBuffer.data(), nullptr, nullptr, FALSE,
                          CREATE_DEFAULT_ERROR_MODE, nullptr, nullptr, &startup, &started)) {
        return windows::LastStatus();
    }
    const windows::Owned<HANDLE, ::CloseHandle> process(started.hProcess);
    const windows::Owned<HANDLE, ::CloseHandle> thread(started.hThread);
    processId = static_cast<std::int32_t>(started.dwProcessId);
    return StatusSuccess;
}

Handle OpenProcess(std::int32_t access, std::int32_t inherit, std::int32_t processId) {
    return windows::HandleOf(::OpenProcess(static_cast<DWORD>(access), inherit != 0, static_cast<DWORD>(processId)));
}

std::uint32_t WaitForSingleObject(Handle process, std::uint32_t milliseconds) {
    return ::WaitForSingleObject(windows::SystemHandleOf<HANDLE>(process), milliseconds);
}

}  // namespace platform

#include "platform/ShellCalls.h"

#include "platform/windows/Apartment.h"
#include "platform/windows/Win32.h"

namespace platform {

std::int32_t ShellExecuteA(Handle owner, const std::string& verb, const std::string& file,
                           const std::string& parameters, const std::string& directory, std::int32_t show) {
    windows::ApartmentEnter();
    return windows::HandleOf(::ShellExecuteA(windows::SystemHandleOf<HWND>(owner), verb.c_str(), file.c_str(),
                                             parameters.c_str(), directory.c_str(), show));
}

Status StartCommandLine(const std::string& command, std::int32_t windowStyle, std::int32_t& processId) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(windowStyle);
    PROCESS_INFORMATION process{};
    std::string commandBuffer = command;
    if (!::CreateProcessA(nullptr, commandBuffer.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE, nullptr,
                          nullptr, &startup, &process)) {
        return windows::LastStatus();
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    processId = static_cast<std::int32_t>(process.dwProcessId);
    return StatusSuccess;
}

Handle OpenProcess(std::int32_t access, std::int32_t inherit, std::int32_t processId) {
    return windows::HandleOf(::OpenProcess(static_cast<DWORD>(access), inherit != 0, static_cast<DWORD>(processId)));
}

std::uint32_t WaitForSingleObject(Handle process, std::uint32_t milliseconds) {
    return ::WaitForSingleObject(windows::SystemHandleOf<HANDLE>(process), milliseconds);
}

}  // namespace platform

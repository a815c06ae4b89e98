#include "Program.h"

#include <doctest/doctest.h>

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
    // The program's own process has the system's registry.
    ::RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    ::RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
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

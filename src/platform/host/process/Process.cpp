#include "platform/Process.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <system_error>
#include <vector>

#include "platform/ProgramVersionText.h"
#include "platform/Regional.h"
#include "platform/host/DateValue.h"
#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"

namespace platform {

namespace {

std::vector<std::string> givenArguments;

}  // namespace

void ProcessStart(int argumentCount, char** arguments) {
    givenArguments.assign(arguments, arguments + argumentCount);
}

std::u16string CommandLineTail() {
    std::string tail;
    for (std::size_t number = 1; number < givenArguments.size(); ++number) {
        const std::string& argument = givenArguments[number];
        tail += (number == 1 ? "" : " ") + (argument.empty() ? "\"\"" : argument);
    }
    return host::FromUtf8(tail);
}

std::vector<std::u16string> CommandLineArguments() {
    std::vector<std::u16string> arguments;
    std::transform(givenArguments.begin() + 1, givenArguments.end(), std::back_inserter(arguments), host::FromUtf8);
    return arguments;
}

// Line endings are LF on the host. Ignores SIGPIPE so that a closed pipe doesn't kill the process.
void WriteConsoleW(std::int32_t stream, const std::u16string& text) {
    std::signal(SIGPIPE, SIG_IGN);
    std::string bytes = host::ToUtf8(text);
    std::erase(bytes, '\r');
    (stream == StdErrorHandle ? std::cerr : std::cout) << bytes << std::flush;
}

std::string GetEnvironmentVariableA(const std::string& name) {
    const std::u16string wanted = TextFromAnsi(name);
    if (const char* const value = std::getenv(host::ToUtf8(wanted).c_str()); value != nullptr) {
        return AnsiFromText(host::FromUtf8(value));
    }
    return AnsiFromText(host::NamedValues("environment")[CharUpperW(wanted)]);
}

double Now() {
    return host::DateValueOf(std::time(nullptr));
}

ProgramVersion ProgramVersionGet() {
    return {host::FromUtf8(VTV4V_FILE_DESCRIPTION), host::FromUtf8(VTV4V_COPYRIGHT), VTV4V_VERSION_MAJOR,
            VTV4V_VERSION_MINOR, VTV4V_VERSION_REVISION};
}

// Presents the host's file system as drive Z:, even if the machine has no such drive.
std::string ProgramFolder() {
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical("/proc/self/exe", error);
    std::string path = "Z:" + AnsiFromText(host::FromUtf8(file.parent_path().native()));
    std::ranges::replace(path, '/', '\\');
    return path;
}

}  // namespace platform

#include "platform/ShellCalls.h"

#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <iomanip>
#include <sstream>
#include <thread>
#include <vector>

#include "platform/Regional.h"
#include "platform/host/HandleTable.h"
#include "platform/host/StatusFromErrno.h"
#include "platform/host/Unicode.h"
#include "platform/host/console/Dialog.h"
#include "platform/host/drive/Drive.h"
#include "platform/host/process/ClassValue.h"
#include "platform/host/process/StartedProgram.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

// Result codes of ShellExecuteA beside those that are statuses.
constexpr std::int32_t ShellStarted = 33;
constexpr std::int32_t ShellBadFormat = 11;      // ERROR_BAD_FORMAT: a program file that cannot run
constexpr std::int32_t ShellNoAssociation = 31;  // SE_ERR_NOASSOC

// The arguments of a command line, the program's name first. Blanks part them, double quotes around one hold its blanks
// together, and nothing else has a meaning.
std::vector<std::string> CommandLineArguments(const std::string& commandLine) {
    std::vector<std::string> arguments;
    std::istringstream left(commandLine);
    for (std::string argument; left >> std::quoted(argument, '"', '\0');) {
        arguments.push_back(argument);
    }
    return arguments;
}

// The program file that a command line names by its path, or by its name in the folders of the machine's system; else
// the name itself, for the host's PATH. The folder that we happen to stand in is not looked at.
std::string ProgramFile(const std::string& name) {
    const bool isPath = name.find_first_of("\\/:") != std::string::npos;
    for (const std::string& path : isPath ? std::vector<std::string>{name}
                                          : std::vector{"C:\\Windows\\System32\\" + name, "C:\\Windows\\" + name}) {
        if (const host::ResolvedPath place = host::ResolvePath(path); place.IsFile()) {
            return place.path;
        }
    }
    return host::ToUtf8(TextFromAnsi(name));
}

// The program of a command line, in which "%1" stands for `document`.
host::ProgramStart ProgramOf(const std::string& command, const std::string& document = {}) {
    host::ProgramStart program{CommandLineArguments(command)};
    if (program.arguments.empty()) {
        program.arguments.emplace_back();  // no program has this name
    }
    for (std::string& argument : program.arguments) {
        const bool isProgram = &argument == &program.arguments.front();
        argument = isProgram ? ProgramFile(argument) : host::ToUtf8(TextFromAnsi(argument));
        if (const std::size_t place = argument.find("%1"); place != std::string::npos && !isProgram) {
            argument.replace(place, 2, document);
        }
    }
    return program;
}

}  // namespace

// Documents are opened with the one verb "open" and without parameters.
std::int32_t ShellExecuteA(Handle /*owner*/, const std::string& /*verb*/, const std::string& file,
                           const std::string& /*parameters*/, const std::string& directory, std::int32_t /*show*/) {
    std::string path = file;
    std::erase(path, '"');
    const host::ResolvedPath document = host::ResolvePath(path);
    if (document.status != StatusSuccess) {
        return document.status < ShellStarted ? document.status : StatusFileNotFound;
    }
    const std::string type = AnsiFromText(host::FromUtf8(fs::path(document.path).extension().native()));
    const std::string className = type.empty() ? type : host::ClassText(type);
    const std::string command = className.empty() ? className : host::ClassText(className + "\\shell\\open\\command");
    if (command.empty()) {
        return ShellNoAssociation;
    }
    host::ProgramStart program = ProgramOf(command, document.path);
    const host::ResolvedPath folder = host::ResolvePath(directory);
    program.directory = folder.IsFolder() ? folder.path : std::string();
    pid_t process = 0;
    const bool inTerminal = host::HasTerminal() && host::ClassNumber(className, "Terminal") == 1;
    const Status status =
        host::StatusFromErrno(inTerminal ? host::RunInTerminal(program) : host::StartProgram(program, process));
    return status == StatusSuccess ? ShellStarted : status < ShellStarted ? status : ShellBadFormat;
}

Status StartCommandLine(const std::string& command, std::int32_t /*windowStyle*/, std::int32_t& processId) {
    return host::StatusFromErrno(host::StartProgram(ProgramOf(command), processId));
}

Handle OpenProcess(std::int32_t /*access*/, std::int32_t /*inherit*/, std::int32_t processId) {
    return kill(processId, 0) == 0 ? host::HandleAdd(host::ProcessReference{processId}) : 0;
}

// Without a time-out it is the longest that there is, some weeks.
std::uint32_t WaitForSingleObject(Handle process, std::uint32_t milliseconds) {
    const auto* const reference = host::HandleFindAs<host::ProcessReference>(process);
    if (reference == nullptr) {
        return WaitFailed;
    }
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (waitpid(reference->number, nullptr, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= end) {
            return WaitTimeout;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return WaitObject0;
}

}  // namespace platform

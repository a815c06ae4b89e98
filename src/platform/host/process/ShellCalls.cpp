#include "platform/ShellCalls.h"

#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <sstream>
#include <thread>
#include <vector>

#include "platform/Regional.h"
#include "platform/host/HandleTable.h"
#include "platform/host/Machine.h"
#include "platform/host/StatusFromErrno.h"
#include "platform/host/Unicode.h"
#include "platform/host/console/Terminal.h"
#include "platform/host/drive/Drive.h"
#include "platform/host/process/ClassValue.h"
#include "platform/host/process/StartedProgram.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

// Result codes of ShellExecuteA that aren't statuses.
constexpr std::int32_t ShellStarted = 33;
constexpr std::int32_t ShellBadFormat = 11;      // ERROR_BAD_FORMAT: the program file can't be run
constexpr std::int32_t ShellNoAssociation = 31;  // SE_ERR_NOASSOC

// Splits a command line at spaces and tabs outside double quotes, and removes the quotes. An unclosed quote extends to
// the end of the line. No other character is special.
std::vector<std::string> SplitCommandLine(const std::string& commandLine) {
    std::vector<std::string> arguments;
    bool isQuoted = false;
    bool isInArgument = false;
    for (const char next : commandLine) {
        const bool isSeparator = !isQuoted && (next == ' ' || next == '\t');
        if (!isSeparator && !isInArgument) {
            arguments.emplace_back();
        }
        isInArgument = !isSeparator;
        if (next == '"') {
            isQuoted = !isQuoted;
        } else if (isInArgument) {
            arguments.back() += next;
        }
    }
    return arguments;
}

// Looks up a bare program name in the absolute directories of the host's PATH. Returns "" if the program isn't found.
std::string FindInHostPath(const std::string& name) {
    std::istringstream folders(host::ProcessVariable("PATH"));
    for (std::string folder; std::getline(folders, folder, ':');) {
        const fs::path file = fs::path(folder) / name;
        std::error_code error;
        if (file.is_absolute() && fs::is_regular_file(file, error) && access(file.c_str(), X_OK) == 0) {
            return file.native();
        }
    }
    return {};
}

// Returns the host path of a program. Looks up a bare name in the machine's system folders and then in the host's PATH.
// Returns an empty string if the program isn't found.
std::string FindProgram(const std::string& name) {
    const bool isPath = name.find_first_of("\\/:") != std::string::npos;
    for (const std::string& path : isPath ? std::vector<std::string>{name}
                                          : std::vector{"C:\\Windows\\System32\\" + name, "C:\\Windows\\" + name}) {
        if (const host::ResolvedPath resolved = host::ResolvePath(path); resolved.IsFile()) {
            return resolved.path;
        }
    }
    return isPath ? std::string() : FindInHostPath(host::ToUtf8(TextFromAnsi(name)));
}

// Returns the program and arguments of a command line, with "%1" replaced by `document`.
host::ProgramStart ProgramOf(const std::string& command, const std::string& document = {}) {
    host::ProgramStart program{SplitCommandLine(command)};
    if (program.arguments.empty()) {
        program.arguments.emplace_back();  // no program has an empty name
    }
    for (std::string& argument : program.arguments) {
        const bool isProgram = &argument == &program.arguments.front();
        argument = isProgram ? FindProgram(argument) : host::ToUtf8(TextFromAnsi(argument));
        if (const std::size_t offset = argument.find("%1"); offset != std::string::npos && !isProgram) {
            argument.replace(offset, 2, document);
        }
    }
    return program;
}

// Removes the quotes around a path and replaces doubled quotes inside the path with single ones.
std::string Unquote(const std::string& quoted) {
    std::string path;
    bool isEscaped = false;
    for (const char next : quoted) {
        isEscaped = next == '"' && !isEscaped;
        path.append(isEscaped ? 0 : 1, next);
    }
    return path;
}

}  // namespace

// Supports only the verb "open", without parameters.
std::int32_t ShellExecuteA(Handle /*owner*/, const std::string& /*verb*/, const std::string& file,
                           const std::string& /*parameters*/, const std::string& directory, std::int32_t /*show*/) {
    const host::ResolvedPath document = host::ResolvePath(Unquote(file));
    if (document.status != StatusSuccess) {
        return document.status < ShellStarted ? document.status : StatusFileNotFound;
    }
    const std::string type = AnsiFromText(host::FromUtf8(fs::path(document.path).extension().native()));
    std::string className;
    std::string command;
    if (!type.empty() && host::ClassText(type, className) == StatusSuccess) {
        host::ClassText(className + "\\shell\\open\\command", command);
    }
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

// Treats WaitInfinite as a timeout of seven weeks.
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

#include "platform/ShellCalls.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iomanip>
#include <iterator>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/Regional.h"
#include "platform/ScopeExit.h"
#include "platform/host/HandleTable.h"
#include "platform/host/Machine.h"
#include "platform/host/StatusFromErrno.h"
#include "platform/host/Unicode.h"
#include "platform/host/console/Terminal.h"
#include "platform/host/drive/Drive.h"
#include "platform/host/process/ClassValue.h"

extern char** environ;

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

// Splits a command line. The first element is the program's host path, or empty if the program isn't found. The others
// are the arguments, with "%1" replaced by `document`.
std::vector<std::string> ProgramOf(const std::string& command, const std::string& document = {}) {
    std::vector<std::string> program = SplitCommandLine(command);
    program.resize(std::max<std::size_t>(program.size(), 1));  // an empty name is never found
    program.front() = FindProgram(program.front());
    std::for_each(program.begin() + 1, program.end(), [&](std::string& argument) {
        argument = host::ToUtf8(TextFromAnsi(argument));
        if (const std::size_t offset = argument.find("%1"); offset != std::string::npos) {
            argument.replace(offset, 2, document);
        }
    });
    return program;
}

// Starts a program (see ProgramOf) in `folder`, or in this process's working directory if `folder` is empty. If
// `inTerminal` is false, the program reads from /dev/null and gets its own process group, so that Ctrl-C in the
// terminal doesn't reach it; if this process has a terminal, the program's output also goes to /dev/null.
Status StartProgram(std::vector<std::string> program, const std::string& folder, bool inTerminal, pid_t& process) {
    // Reaps child processes that have exited, so that zombies don't accumulate.
    while (waitpid(-1, nullptr, WNOHANG) > 0) {
    }
    std::vector<char*> arguments;
    std::ranges::transform(program, std::back_inserter(arguments), [](std::string& it) { return it.data(); });
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (!folder.empty()) {
        posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    }
    if (!inTerminal) {
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    if (!inTerminal && host::HasTerminal()) {
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    }
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, static_cast<short>(inTerminal ? 0 : POSIX_SPAWN_SETPGROUP));
    const int failure = posix_spawn(&process, arguments.front(), &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return host::StatusFromErrno(failure);
}

// Runs a program in the terminal and waits until it exits.
Status RunInTerminal(const std::vector<std::string>& program, const std::string& folder) {
    host::SuspendWindows();
    const ScopeExit resume(host::ResumeWindows);
    pid_t process = 0;
    const Status status = StartProgram(program, folder, true, process);
    while (status == StatusSuccess && waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
    return status;
}

// Removes the quotes around a path and replaces doubled quotes inside the path with single ones.
std::string Unquote(std::string path) {
    if (path.starts_with('"')) {
        std::istringstream(path) >> std::quoted(path, '"', '"');
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
    const std::vector<std::string> program = ProgramOf(command, document.path);
    const host::ResolvedPath resolved = host::ResolvePath(directory);
    const std::string folder = resolved.IsFolder() ? resolved.path : std::string();
    pid_t process = 0;
    const bool inTerminal = host::HasTerminal() && host::ClassNumber(className, "Terminal") == 1;
    const Status status = inTerminal ? RunInTerminal(program, folder) : StartProgram(program, folder, false, process);
    return status == StatusSuccess ? ShellStarted : status < ShellStarted ? status : ShellBadFormat;
}

Status StartCommandLine(const std::string& command, std::int32_t /*windowStyle*/, std::int32_t& processId) {
    return StartProgram(ProgramOf(command), {}, false, processId);
}

Handle OpenProcess(std::int32_t /*access*/, std::int32_t /*inherit*/, std::int32_t processId) {
    return kill(processId, 0) == 0 ? host::HandleAdd(host::ProcessReference{processId}) : 0;
}

// Treats WaitInfinite as a timeout of seven weeks.
std::uint32_t WaitForSingleObject(Handle process, std::uint32_t milliseconds) {
    const auto* const number = std::get_if<host::ProcessReference>(host::HandleFind(process));
    if (number == nullptr) {
        return WaitFailed;
    }
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (waitpid(*number, nullptr, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= end) {
            return WaitTimeout;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return WaitObject0;
}

}  // namespace platform

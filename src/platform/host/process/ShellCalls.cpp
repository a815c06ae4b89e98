#include "platform/ShellCalls.h"

#include <algorithm>
#include <optional>

#include "platform/Regional.h"
#include "platform/host/HandleTable.h"
#include "platform/host/HostStatus.h"
#include "platform/host/Unicode.h"
#include "platform/host/drive/Drive.h"
#include "platform/host/process/ClassText.h"
#include "platform/host/process/CommandLine.h"
#include "platform/host/process/ProgramSearch.h"
#include "platform/host/process/StartedProcess.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

// Result codes of ShellExecuteA beside those that are statuses.
constexpr std::int32_t ShellStarted = 33;
constexpr std::int32_t ShellBadFormat = 11;              // ERROR_BAD_FORMAT
constexpr std::int32_t ShellIncompleteAssociation = 27;  // SE_ERR_ASSOCINCOMPLETE
constexpr std::int32_t ShellNoAssociation = 31;          // SE_ERR_NOASSOC

// The command line with which documents of this type are opened. 0 or a result code.
std::int32_t FindAssociation(const fs::path& document, const std::string& verb, std::string& command) {
    const std::string type = AnsiFromText(host::FromUtf8(document.extension().native()));
    if (type.empty()) {
        return ShellNoAssociation;
    }
    const host::ClassText className(type);
    if (className.Result() != StatusSuccess) {
        return className.Result() == StatusFileNotFound ? ShellNoAssociation : ShellIncompleteAssociation;
    }
    // A type without a class may hold its command itself.
    const std::string owner = className.Text().empty() ? type : className.Text();
    const host::ClassText found(owner + "\\shell\\" + (verb.empty() ? "open" : verb) + "\\command");
    if (found.Result() == StatusSuccess && !found.Text().empty()) {
        command = found.Text();
        return 0;
    }
    return className.Text().empty() && found.Result() == StatusFileNotFound ? ShellNoAssociation
                                                                            : ShellIncompleteAssociation;
}

// Where an argument of a command line names the document: "%1", or "%L" for its long name.
std::size_t DocumentPlace(const std::string& argument) {
    return std::min({argument.find("%1"), argument.find("%L"), argument.find("%l")});
}

// The command line's arguments for the host. `document`, when there is one, stands where the command line names it, or
// else behind the others. "%*" stands for further arguments, of which there are none. The program's name keeps to what
// the registry says.
std::vector<std::string> HostArguments(const std::string& command, const std::optional<std::string>& document) {
    std::vector<std::string> arguments = host::CommandLineArguments(command);
    bool told = false;
    for (std::size_t number = 1; number < arguments.size(); ++number) {
        std::string& argument = arguments[number];
        argument = host::ToUtf8(TextFromAnsi(argument));
        if (const std::size_t place = DocumentPlace(argument); document && place != std::string::npos) {
            argument.replace(place, 2, *document);
            told = true;
        }
    }
    std::erase(arguments, "%*");
    if (document && !told) {
        arguments.push_back(*document);
    }
    return arguments;
}

Status Start(std::vector<std::string> arguments, const fs::path& directory, pid_t& process) {
    host::StartOrder order;
    int failure = host::FindProgram(arguments.front(), order.program);
    if (failure == 0) {
        arguments.front() = order.program.native();
        order.arguments = std::move(arguments);
        order.directory = directory;
        failure = host::StartProgram(order, process);
    }
    return host::StatusFromErrno(failure);
}

// A status as a result code. What has no code of its own is a program file that cannot run.
std::int32_t ShellCode(Status status) {
    if (status == StatusSuccess) {
        return ShellStarted;
    }
    return status < ShellStarted ? status : ShellBadFormat;
}

std::string Unquoted(const std::string& file) {
    return file.size() >= 2 && file.starts_with('"') && file.ends_with('"') ? file.substr(1, file.size() - 2) : file;
}

}  // namespace

std::int32_t ShellExecuteA(Handle /*owner*/, const std::string& verb, const std::string& file,
                           const std::string& parameters, const std::string& directory, std::int32_t /*show*/) {
    const host::DrivePlace document = host::FindPlace(Unquoted(file));
    if (document.status != StatusSuccess) {
        return document.status < ShellStarted ? document.status : StatusFileNotFound;
    }
    std::string command;
    if (const std::int32_t code = FindAssociation(document.path, verb, command); code != 0) {
        return code;
    }
    if (!parameters.empty()) {
        command += " " + parameters;
    }
    const host::DrivePlace folder = host::FindPlace(directory);
    pid_t process = 0;
    return ShellCode(
        Start(HostArguments(command, document.path), folder.IsFolder() ? folder.path : std::string(), process));
}

Status StartCommandLine(const std::string& command, std::int32_t /*windowStyle*/, std::int32_t& processId) {
    pid_t process = 0;
    const Status status = Start(HostArguments(command, {}), {}, process);
    if (status == StatusSuccess) {
        processId = process;
    }
    return status;
}

Handle OpenProcess(std::int32_t access, std::int32_t /*inherit*/, std::int32_t processId) {
    std::shared_ptr<host::StartedProcess> process = host::FindProcess(processId);
    return process ? host::HandleAdd(host::ProcessReference{std::move(process), (access & Synchronize) != 0}) : 0;
}

std::uint32_t WaitForSingleObject(Handle process, std::uint32_t milliseconds) {
    const auto* const reference = host::HandleFindAs<host::ProcessReference>(process);
    if (reference == nullptr || !reference->waitable) {
        return WaitFailed;
    }
    std::optional<std::chrono::milliseconds> limit;
    if (milliseconds != WaitInfinite) {
        limit = std::chrono::milliseconds(milliseconds);
    }
    return reference->process->EndAwaited(limit) ? WaitObject0 : WaitTimeout;
}

}  // namespace platform

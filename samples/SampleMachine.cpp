// Creates a machine folder on which the program runs: environment, folders, an editor for text files, and the suite's
// components. On an existing machine, adds whatever is missing, removes the components named by --without, and changes
// nothing else.

#include <array>
#include <cerrno>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "SampleParts.h"
#include "platform/Process.h"
#include "platform/Regional.h"
#include "platform/RegistryCalls.h"
#include "platform/host/Machine.h"
#include "platform/host/Unicode.h"
#include "platform/host/drive/Drive.h"
#include "samples/InstalledSuite.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* Usage =
    "usage: sample-machine DIR [--without COMPONENT]...\n"
    "COMPONENT is a row in the check's report, such as sevCmd4.ocx, vcutil1.dll or MazeWalker.exe.\n";
constexpr const char* NotepadPath = "C:\\Windows\\notepad";

// Values below HKEY_CLASSES_ROOT that associate text files with a terminal editor.
struct ClassValue {
    const char* key;
    const char* name;
    std::uint32_t type;
    std::string_view data;
};
constexpr std::array ClassValues{
    ClassValue{".txt", "", platform::RegSz, "txtfile"},
    ClassValue{"txtfile", "", platform::RegSz, "Textdokument"},
    ClassValue{"txtfile", "Terminal", platform::RegDword, {"\1\0\0\0", 4}},
    ClassValue{"txtfile\\shell\\open\\command", "", platform::RegSz, "\"C:\\Windows\\notepad\" \"%1\""},
};

void AddEnvironment(const fs::path& machine) {
    const auto existing = platform::host::NamedValues("environment");
    std::istringstream lines{EnvironmentText};
    for (std::string line; std::getline(lines, line);) {
        const std::string name = line.substr(0, line.find('='));
        if (!existing.contains(platform::CharUpperW(platform::host::FromUtf8(name)))) {
            AppendLine(machine / "environment", line);
        }
    }
}

void CompleteMachine(const fs::path& machine, const std::set<std::string>& without) {
    fs::create_directories(machine);
    setenv("VTV4V_MACHINE", machine.c_str(), 1);
    AddEnvironment(machine);
    const std::string home =
        platform::GetEnvironmentVariableA("HOMEDRIVE") + platform::GetEnvironmentVariableA("HOMEPATH");
    CreateFolders(home + "\\Eigene Dateien\\");
    if (AddFile(NotepadPath, NotepadText)) {
        const std::string program = platform::host::ResolvePath(NotepadPath).path;
        fs::permissions(program, fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec,
                        fs::perm_options::add);
    }
    for (const ClassValue& value : ClassValues) {
        AddValue(platform::KeyClassesRoot, value.key, value.name, value.type, value.data);
    }
    InstalledSuiteAdd(without);
}

// True if the folder is missing or empty, or contains only the clipboard file, which even a failed check creates.
bool HasNoMachine(const fs::path& folder) {
    return !fs::exists(folder) || fs::is_empty(folder) ||
           (fs::exists(folder / "clipboard.txt") && std::distance(fs::directory_iterator(folder), {}) == 1);
}

// Builds a new machine in a temporary folder next to `machine`, so that `machine` never holds half of one.
void CreateMachine(const fs::path& machine, const std::set<std::string>& without) {
    std::string unfinished = machine.native() + ".XXXXXX";
    fs::create_directories(machine.parent_path());
    if (mkdtemp(unfinished.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), unfinished);
    }
    try {
        fs::permissions(unfinished, fs::perms(0755));
        CompleteMachine(unfinished, without);
        fs::remove(machine / "clipboard.txt");
        fs::rename(unfinished, machine);
    } catch (...) {
        std::error_code error;
        fs::remove_all(unfinished, error);
        throw;
    }
}

struct Arguments {
    std::string machine;
    std::set<std::string> without;
};

Arguments ReadArguments(const std::vector<std::string>& arguments) {
    Arguments read;
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const std::string& argument = arguments[index];
        if (argument == "--without" && index + 1 < arguments.size()) {
            const std::string& component = arguments[++index];
            if (!InstalledSuiteKnows(component)) {
                throw std::invalid_argument("unknown component \"" + component + "\"");
            }
            read.without.insert(component);
        } else if (argument.empty() || argument.front() == '-' || !read.machine.empty()) {
            throw std::invalid_argument("unexpected argument \"" + argument + "\"");
        } else {
            read.machine = argument;
        }
    }
    if (read.machine.empty()) {
        throw std::invalid_argument("DIR is missing");
    }
    return read;
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
    try {
        const Arguments read = ReadArguments({arguments + 1, arguments + argumentCount});
        const fs::path machine = fs::weakly_canonical(read.machine);
        HasNoMachine(machine) ? CreateMachine(machine, read.without) : CompleteMachine(machine, read.without);
    } catch (const std::invalid_argument& error) {
        std::cerr << "sample-machine: " << error.what() << '\n' << Usage;
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "sample-machine: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

// Makes a machine folder in which the program runs through: environment, folders, an editor for text files, and the
// suite's components. What is there already stays as it is, so that a machine in use can be completed.

#include <array>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
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

constexpr std::array Folders{"C:\\Windows\\System32", "C:\\Program Files\\Common Files"};
constexpr const char* NotepadPath = "C:\\Windows\\notepad";

// The values below HKEY_CLASSES_ROOT by which a text file finds its editor, which works in the terminal.
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

void Tell(std::string_view what, std::string_view name) {
    std::cout << what << name << '\n';
}

// Goes down level by level, because one that is there may be spelled in other letter case.
void MakeFolder(const fs::path& machine, const std::string& path) {
    bool made = fs::create_directories(platform::host::FindPlace("C:\\").IsFolder() ? machine : machine / "drives/c");
    for (std::size_t end = path.find('\\'); end != std::string::npos;) {
        end = path.find('\\', end + 1);
        const platform::host::DrivePlace place = platform::host::FindPlace(path.substr(0, end));
        made = place.status == platform::StatusFileNotFound && fs::create_directory(place.path);
    }
    if (!platform::host::FindPlace(path).IsFolder()) {
        throw std::runtime_error("cannot make the folder " + platform::host::ToUtf8(platform::TextFromAnsi(path)));
    }
    Tell(made ? "made  " : "kept  ", platform::host::ToUtf8(platform::TextFromAnsi(path)));
}

void Append(const fs::path& path, std::string_view text) {
    std::ofstream file(path, std::ios::binary | std::ios::app);
    file << text << std::flush;
    if (!file) {
        throw std::runtime_error("cannot write " + path.native());
    }
}

void MakeEnvironment(const fs::path& machine) {
    const fs::path path = machine / "environment";
    const auto present = platform::host::NamedValues("environment");
    std::istringstream lines{EnvironmentText};
    for (std::string line; std::getline(lines, line);) {
        const std::string name = line.substr(0, line.find('='));
        if (present.contains(platform::CharUpperW(platform::host::FromUtf8(name)))) {
            Tell("kept  ", "environment: " + name);
        } else {
            AppendLine(path, line);
            Tell("made  ", "environment: " + line);
        }
    }
}

void MakeProgram(const std::string& path, std::string_view text) {
    const platform::host::DrivePlace place = platform::host::FindPlace(path);
    if (place.status == platform::StatusSuccess) {
        Tell("kept  ", path);
        return;
    }
    // The program gets its name when it is whole.
    const fs::path beside = place.path + ".new";
    fs::remove(beside);
    Append(beside, text);
    fs::permissions(beside, fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec,
                    fs::perm_options::add);
    fs::rename(beside, place.path);
    Tell("made  ", path);
}

void AddClassValue(const ClassValue& value) {
    const bool added = AddValue(platform::KeyClassesRoot, value.key, value.name, value.type, value.data);
    Tell(added ? "made  " : "kept  ",
         "HKEY_CLASSES_ROOT\\" + std::string(value.key) + (*value.name == 0 ? "" : ": ") + value.name);
}

void MakeMachine(const fs::path& machine, const std::set<std::string>& without) {
    fs::create_directories(machine);
    setenv("VTV4V_MACHINE", fs::absolute(machine).c_str(), 1);
    MakeEnvironment(machine);
    MakeFolder(machine, platform::GetEnvironmentVariableA("HOMEDRIVE") + platform::GetEnvironmentVariableA("HOMEPATH") +
                            "\\Eigene Dateien");
    for (const char* const folder : Folders) {
        MakeFolder(machine, folder);
    }
    MakeProgram(NotepadPath, NotepadText);
    for (const ClassValue& value : ClassValues) {
        AddClassValue(value);
    }
    InstalledSuiteAdd(without);
    Tell("made  ", "the suite's components");
}

struct Arguments {
    std::string machine;
    std::set<std::string> without;
};

// Nothing when the arguments cannot be understood.
std::optional<Arguments> ReadArguments(const std::vector<std::string>& arguments) {
    Arguments read;
    for (std::size_t place = 0; place < arguments.size(); ++place) {
        const std::string& argument = arguments[place];
        if (argument == "--without" && place + 1 < arguments.size() && InstalledSuiteKnows(arguments[place + 1])) {
            read.without.insert(arguments[++place]);
        } else if (argument.empty() || argument.front() == '-' || !read.machine.empty()) {
            return {};
        } else {
            read.machine = argument;
        }
    }
    return read.machine.empty() ? std::nullopt : std::optional(read);
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
    const std::optional<Arguments> read = ReadArguments({arguments + 1, arguments + argumentCount});
    if (!read) {
        std::cerr << "usage: sample-machine DIR [--without COMPONENT]...\n"
                     "COMPONENT is a row of the check's report, such as sevCmd4.ocx, vcutil1.dll or MazeWalker.exe.\n";
        return 2;
    }
    try {
        MakeMachine(read->machine, read->without);
    } catch (const std::exception& error) {
        std::cerr << "sample-machine: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

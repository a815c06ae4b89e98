#include "TestMachine.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

#include "host/MachineFiles.h"
#include "platform/host/Machine.h"

namespace {

namespace fs = std::filesystem;

std::optional<std::string> ProcessVariable(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

void ProcessVariable(const std::string& name, const std::optional<std::string>& value) {
    if (value) {
        setenv(name.c_str(), value->c_str(), 1);
    } else {
        unsetenv(name.c_str());
    }
}

fs::path NewFolder() {
    std::string name = (fs::temp_directory_path() / "vtv4v-test-XXXXXX").native();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for a test's machine");
    }
    return name;
}

// The tests' paths are of drive C: and have no letters beyond ASCII.
std::string BelowMachine(std::string path) {
    std::ranges::replace(path, '\\', '/');
    return "drives/c/" + path.substr(path.find('/') + 1);
}

}  // namespace

struct TestMachine::State {
    fs::path folder = NewFolder();
    std::map<std::string, std::optional<std::string>> earlierVariables;
};

// No program that a case starts may wait for the person who runs the tests.
TestMachine::TestMachine() : state_(new State) {
    if (std::freopen("/dev/null", "r", stdin) == nullptr) {
        throw std::runtime_error("no empty input for a test");
    }
    fs::create_directories(state_->folder / "drives/c/Users/hugo/Eigene Dateien");
    Environment("VTV4V_MACHINE", state_->folder.native());
    Environment("HOMEDRIVE", "C:");
    Environment("HOMEPATH", "\\Users\\hugo");
    Environment("USERNAME", "hugo");
    Environment("USERDOMAIN", "OFFICE");
    Environment("USERDNSDOMAIN", "office.example");
}

TestMachine::~TestMachine() {
    for (const auto& [name, value] : state_->earlierVariables) {
        ProcessVariable(name, value);
    }
    std::error_code error;
    fs::remove_all(state_->folder, error);
    delete state_;
}

std::string TestMachine::ControlFile() const {
    return ProcessVariable("HOMEDRIVE").value_or("") + ProcessVariable("HOMEPATH").value_or("") +
           "\\Eigene Dateien\\vtv4v.txt";
}

void TestMachine::Environment(const std::string& name, const std::optional<std::string>& value) {
    state_->earlierVariables.emplace(name, ProcessVariable(name));
    ProcessVariable(name, value);
}

void FileContent(const std::string& path, const std::string& bytes) {
    MachineFile(BelowMachine(path), bytes);
}

std::optional<std::string> FileContent(const std::string& path) {
    const std::string below = BelowMachine(path);
    return fs::exists(OnMachine(below)) ? std::optional(MachineFile(below)) : std::nullopt;
}

fs::path OnMachine(const std::string& below) {
    return platform::host::MachineFolder() / below;
}

void MachineFile(const std::string& below, std::string_view bytes) {
    fs::create_directories(OnMachine(below).parent_path());
    std::ofstream file(OnMachine(below), std::ios::binary | std::ios::trunc);
    file << bytes << std::flush;
    if (!file) {
        throw std::runtime_error("cannot write " + below);
    }
}

std::string MachineFile(const std::string& below) {
    std::ifstream file(OnMachine(below), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Writable(const std::string& below, bool writable) {
    fs::permissions(OnMachine(below), fs::perms::owner_write,
                    writable ? fs::perm_options::add : fs::perm_options::remove);
}

int ExitCode(pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

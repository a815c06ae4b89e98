#include "TestMachine.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

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

// Latin letters of the 8-bit code page are two bytes on the disk. The tests name nothing beyond them.
std::string OnDisk(const std::string& text) {
    std::string bytes;
    for (const char character : text) {
        const auto number = static_cast<unsigned char>(character);
        if (number < 0x80) {
            bytes += character;
        } else {
            bytes += {static_cast<char>(0xC0 | number >> 6), static_cast<char>(0x80 | (number & 0x3F))};
        }
    }
    return bytes;
}

fs::path FileOnDisk(const std::string& path) {
    fs::path place = platform::host::MachineFolder() / "drives" / "c";
    std::size_t from = path.find('\\') + 1;
    for (std::size_t end = 0; (end = path.find('\\', from)) != std::string::npos; from = end + 1) {
        place /= OnDisk(path.substr(from, end - from));
    }
    return place / OnDisk(path.substr(from));
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
    // A case may have left a folder that nothing can be deleted from.
    std::error_code error;
    for (fs::recursive_directory_iterator entry(state_->folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->is_directory(error)) {
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, error);
        }
    }
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
    const fs::path place = FileOnDisk(path);
    fs::create_directories(place.parent_path());
    std::ofstream file(place, std::ios::binary | std::ios::trunc);
    file << bytes << std::flush;
    if (!file) {
        throw std::runtime_error("cannot write " + path);
    }
}

std::optional<std::string> FileContent(const std::string& path) {
    std::ifstream file(FileOnDisk(path), std::ios::binary);
    if (!file) {
        return {};
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

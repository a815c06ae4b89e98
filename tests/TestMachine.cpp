#include "TestMachine.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

TestMachine::TestMachine() {
    Make();
    Environment("USERNAME", "hugo");
    Environment("USERDOMAIN", "OFFICE");
    Environment("USERDNSDOMAIN", "office.example");
    std::filesystem::create_directories(OnDisk(ControlFile()).parent_path());
}

TestMachine::~TestMachine() {
    for (const auto& [name, value] : earlierVariables_) {
        ProcessVariable(name, value);
    }
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
    Unmake();
}

std::string TestMachine::ControlFile() const {
    return ProcessVariable("HOMEDRIVE").value_or("") + ProcessVariable("HOMEPATH").value_or("") +
           "\\Eigene Dateien\\vtv4v.txt";
}

void TestMachine::Environment(const std::string& name, const std::optional<std::string>& value) {
    earlierVariables_.try_emplace(name, ProcessVariable(name));
    ProcessVariable(name, value);
}

void FileContent(const std::string& path, const std::string& bytes) {
    std::filesystem::create_directories(OnDisk(path).parent_path());
    std::ofstream file(OnDisk(path), std::ios::binary);
    if (!(file << bytes << std::flush)) {
        throw std::runtime_error("cannot write " + path);
    }
}

std::optional<std::string> FileContent(const std::string& path) {
    std::ifstream file(OnDisk(path), std::ios::binary);
    return file ? std::optional(std::string(std::istreambuf_iterator<char>(file), {})) : std::nullopt;
}

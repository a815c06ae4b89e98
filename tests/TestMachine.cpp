#include "TestMachine.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

TestMachine::TestMachine() {
    SetUp();
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
    TearDown();
}

std::string TestMachine::ControlFile() const {
    return ProcessVariable("HOMEDRIVE").value_or("") + ProcessVariable("HOMEPATH").value_or("") +
           "\\Eigene Dateien\\vtv4v.txt";
}

void TestMachine::Environment(const std::string& name, const std::optional<std::string>& value) {
    earlierVariables_.try_emplace(name, ProcessVariable(name));
    ProcessVariable(name, value);
}

std::optional<std::string> ProcessVariable(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

void DiskFile(const std::filesystem::path& path, const std::string& bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    if (!(file << bytes << std::flush)) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

std::optional<std::string> DiskFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return file ? std::optional(std::string(std::istreambuf_iterator<char>(file), {})) : std::nullopt;
}

void FileContent(const std::string& path, const std::string& bytes) {
    DiskFile(OnDisk(path), bytes);
}

std::optional<std::string> FileContent(const std::string& path) {
    return DiskFile(OnDisk(path));
}

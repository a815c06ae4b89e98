#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

// The machine that a test case runs on: fresh when it is made, gone or put back when it ends. On the host it is a
// folder of its own; on Windows it is the running system, with a folder and a registry of its own.
// Texts are in the system's 8-bit code page, but for folder names on the host's own disk.
class TestMachine {
public:
    // Nothing below the products' registry roots, a folder for documents, USERNAME "hugo", USERDOMAIN "OFFICE",
    // USERDNSDOMAIN "office.example".
    TestMachine();
    ~TestMachine();
    TestMachine(const TestMachine&) = delete;
    TestMachine& operator=(const TestMachine&) = delete;

    // The path of "vtv4v.txt" in the folder "Eigene Dateien" of the test's user, as the program sees it.
    [[nodiscard]] std::string ControlFile() const;

    // Sets an environment variable of this process, or unsets it. The earlier one is back at the end.
    void Environment(const std::string& name, const std::optional<std::string>& value);

private:
    // What the platform adds to the making and to the end. The folder is on the disk and goes with the machine.
    void Make();
    void Unmake();

    std::filesystem::path folder_;
    std::map<std::string, std::optional<std::string>> earlierVariables_;
};

// An environment variable of this process.
std::optional<std::string> ProcessVariable(const std::string& name);
void ProcessVariable(const std::string& name, const std::optional<std::string>& value);

// Where a file with the program's path is on the disk.
std::filesystem::path OnDisk(const std::string& path);

// The whole content of a file, by its place on the disk or by the program's path, written and read byte for byte
// without the code under test. Folders that are missing on its way are made.
void DiskFile(const std::filesystem::path& path, const std::string& bytes);
std::optional<std::string> DiskFile(const std::filesystem::path& path);
void FileContent(const std::string& path, const std::string& bytes);
std::optional<std::string> FileContent(const std::string& path);

#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

// The machine that a test case runs on: new at the start of the case, removed or restored at the end. On the host it is
// a temporary folder. On Windows it is the running system, with a temporary folder and a registry of its own. Strings
// are in the system's 8-bit code page.
class TestMachine {
public:
    // Creates a machine with empty registry roots of the products, a folder for documents, USERNAME "hugo", USERDOMAIN
    // "OFFICE" and USERDNSDOMAIN "office.example".
    TestMachine();
    ~TestMachine();
    TestMachine(const TestMachine&) = delete;
    TestMachine& operator=(const TestMachine&) = delete;

    // Returns the path of "vtv4v.txt" in the user's folder "Eigene Dateien", as the program sees it.
    [[nodiscard]] std::string ControlFile() const;

    // Sets or unsets an environment variable of this process until the end of the case.
    void Environment(const std::string& name, const std::optional<std::string>& value);

private:
    // The parts of construction and destruction that depend on the platform.
    void SetUp();
    void TearDown();

    std::filesystem::path folder_;  // deleted at the end
    std::map<std::string, std::optional<std::string>> earlierVariables_;
};

// Get and set an environment variable of this process.
std::optional<std::string> ProcessVariable(const std::string& name);
void ProcessVariable(const std::string& name, const std::optional<std::string>& value);

// Returns the path on the disk of a file with this path in the program.
std::filesystem::path OnDisk(const std::string& path);

// Write and read a whole file without the code under test. DiskFile takes a path on the disk, FileContent a path in the
// program. Writing creates missing folders.
void DiskFile(const std::filesystem::path& path, const std::string& bytes);
std::optional<std::string> DiskFile(const std::filesystem::path& path);
void FileContent(const std::string& path, const std::string& bytes);
std::optional<std::string> FileContent(const std::string& path);

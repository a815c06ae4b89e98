#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

// The machine on which a test case runs, set up for the test case and removed or restored afterwards. On the host, the
// machine is a temporary folder. On Windows, it is the running system with a temporary folder and redirected registry
// roots. Strings are in the system's 8-bit code page.
class TestMachine {
public:
    // Creates a machine with empty registry roots for the products, a documents folder, USERNAME "hugo", USERDOMAIN
    // "OFFICE" and USERDNSDOMAIN "office.example".
    TestMachine();
    ~TestMachine();
    TestMachine(const TestMachine&) = delete;
    TestMachine& operator=(const TestMachine&) = delete;

    // Returns the path of "vtv4v.txt" in the user's folder "Eigene Dateien", as the program sees it.
    [[nodiscard]] std::string ControlFile() const;

    // Sets or unsets an environment variable of this process until the end of the test case.
    void Environment(const std::string& name, const std::optional<std::string>& value);

private:
    // The platform-dependent parts of construction and destruction.
    void SetUp();
    void TearDown();

    std::filesystem::path folder_;  // deleted on destruction
    std::map<std::string, std::optional<std::string>> earlierVariables_;
};

// Get and set an environment variable of this process.
std::optional<std::string> ProcessVariable(const std::string& name);
void ProcessVariable(const std::string& name, const std::optional<std::string>& value);

// Converts a path as the program sees it to a path on disk.
std::filesystem::path OnDisk(const std::string& path);

// Write and read whole files without the code under test. DiskFile takes a path on disk, FileContent a path as the
// program sees it. Writing creates missing folders.
void DiskFile(const std::filesystem::path& path, const std::string& bytes);
std::optional<std::string> DiskFile(const std::filesystem::path& path);
void FileContent(const std::string& path, const std::string& bytes);
std::optional<std::string> FileContent(const std::string& path);

#pragma once

#include <map>

#include "Desktop.h"
#include "TestMachine.h"

// Path of the program under test, "vtv4v.exe" in the folder above the driver's, and how administrators start it.
std::string ProgramPath();
std::string MasterStart();

// What a process holds of the system.
struct HeldObjects {
    std::size_t handles;
    std::size_t drawing;
    std::size_t user;
};

// The program without a control file, started as the shell would on being asked to show it so, and ended at the latest
// with the object.
class Program {
public:
    explicit Program(const std::string& commandLine = MasterStart(),
                     const std::map<std::string, std::string>& environment = {}, WORD show = SW_SHOWNORMAL);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // True once the process has ended by itself, without an error; false when it does not end.
    [[nodiscard]] bool EndedWell() const;
    [[nodiscard]] HeldObjects Objects() const;

    TestMachine machine;

private:
    PROCESS_INFORMATION process_{};
};

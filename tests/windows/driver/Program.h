#pragma once

#include <map>

#include "Desktop.h"
#include "TestMachine.h"

// The program under test, "vtv4v.exe" in the folder above the driver's: its path, and a command line with what stands
// behind its name. Cases of the test suite "anywhere" run on machines without the suite too, and change nothing there
// but the clipboard.
std::string ProgramPath();
std::string Start(const std::string& tail = " -master");

// The program without a control file, started as the shell would on being asked to show it so, and ended at the latest
// with the object.
class Program {
public:
    explicit Program(const std::string& commandLine = Start(),
                     const std::map<std::string, std::string>& environment = {}, WORD show = SW_SHOWNORMAL);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // True once the process has ended by itself, without an error; false when it does not end.
    [[nodiscard]] bool EndedWell() const;

    TestMachine machine;

private:
    PROCESS_INFORMATION process_{};
};

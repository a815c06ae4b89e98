#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace platform::host {

struct ProgramStart {
    std::vector<std::string> arguments;  // the first is the program's host path, empty if the program wasn't found
    std::string directory = {};          // the working directory; if empty, this process's
};

// Starts a program that doesn't use the terminal. The program reads from /dev/null and gets its own process group, so
// that Ctrl-C in the terminal doesn't reach it. If this process has a terminal, the program's output goes to /dev/null.
// Sets `process` and returns 0, or returns the errno of the failure.
int StartProgram(const ProgramStart& program, pid_t& process);

// Gives the terminal to a program and waits until the program exits. Returns 0, or an errno if the start failed.
int RunInTerminal(const ProgramStart& program);

}  // namespace platform::host

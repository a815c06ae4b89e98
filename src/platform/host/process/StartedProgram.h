#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace platform::host {

struct ProgramStart {
    std::vector<std::string> arguments;  // the first is the host path of the program; empty if it wasn't found
    std::string directory = {};          // the working directory; empty for that of this process
};

// Starts a program that doesn't use the terminal. It reads from /dev/null and gets its own process group, so that
// Ctrl-C in the terminal doesn't reach it. If this process shows windows on the terminal, its output goes to /dev/null.
// Sets `process` and returns 0, or returns the errno of the failure.
int StartProgram(const ProgramStart& program, pid_t& process);

// Gives the terminal to a program and waits until it ends. Returns 0 if it was started, or the errno of the failure.
int RunInTerminal(const ProgramStart& program);

}  // namespace platform::host

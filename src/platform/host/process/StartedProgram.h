#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace platform::host {

// A program to start: its file on the host, or a bare name to be looked up on the host's PATH, and its arguments.
struct ProgramStart {
    std::vector<std::string> arguments;  // the first is the program
    std::string directory = {};          // its working directory; empty for our own
};

// Starts a program that needs no terminal: with empty input, in a process group of its own, so that Ctrl-C in our
// terminal is not meant for it. Where our windows are on the terminal, its output is passed over. Sets `process` and
// returns 0, or returns the errno of what failed.
int StartProgram(const ProgramStart& program, pid_t& process);

// Lends the terminal to a program and waits for its end. Returns 0 when it was started, or the errno of what failed.
int RunInTerminal(const ProgramStart& program);

}  // namespace platform::host

#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

// The program as a person starts it on the present machine: a process of its own, fed line by line from a pipe.
struct ProgramRun {
    std::vector<std::string> arguments = {"-master"};
    std::string input = {};                           // what the person types
    std::optional<unsigned long> fileSizeLimit = {};  // bytes that a file may grow to: a disk that is full beyond them
};

struct ProgramEnd {
    int exitCode;        // -1 when a signal ended it
    std::string output;  // standard output and standard error
};

ProgramEnd Run(const ProgramRun& run);

// Starts the program, kills it after `microseconds`, and waits until it is gone. True when it had ended before.
bool RunAndKill(const ProgramRun& run, unsigned microseconds);

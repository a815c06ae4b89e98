#pragma once

#include <optional>
#include <string>
#include <vector>

// The program as a person starts it on the present machine: a process of its own, fed line by line from a file.
struct ProgramRun {
    std::vector<std::string> arguments = {"-master"};  // without a single quote
    std::string input = {};                            // what the person types
    std::optional<unsigned long> fileSizeLimit = {};   // bytes that a file may grow to, a multiple of 512: a full disk
};

struct ProgramEnd {
    int exitCode;        // -1 when a signal ended it
    std::string output;  // standard output and standard error
};

ProgramEnd Run(const ProgramRun& run);

// Starts the program, kills it after `microseconds` of at least 1, and waits until it is gone.
void RunAndKill(const ProgramRun& run, unsigned microseconds);

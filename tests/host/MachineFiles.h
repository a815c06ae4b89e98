#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "TestMachine.h"

// What the host's cases share beside TestMachine: the machine's folder on the host's own disk, and processes.

// A place in the machine's folder, as "user.db" or "drives/c/Users".
std::filesystem::path OnMachine(const std::string& below);

// Gives the owner's right to write a file or folder there, or takes it.
void Writable(const std::string& below, bool writable);

// Runs `steps` in a process of its own, which ends with what they return, and at once when one of them throws: what the
// case has made is not its to undo.
template <typename Steps>
pid_t Started(Steps&& steps) {
    const pid_t process = fork();
    if (process == 0) {
        [&]() noexcept { _exit(steps()); }();
    }
    return process;
}

// Waits for the end of a process; -1 when a signal ended it.
int ExitCode(pid_t process);

#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

#include "TestMachine.h"

// Helpers for tests that run only on the host: files in the machine's folder, processes, and standard input and output.

// Returns the path of a file in the machine's folder, such as "user.db" or "drives/c/Users".
std::filesystem::path OnMachine(const std::string& below);

// Sets or clears the owner's write bit on a file or folder in the machine's folder.
void Writable(const std::string& below, bool writable);

// Runs `steps` with `input` as standard input, and returns what they print.
std::string OutputOf(const std::string& input, const std::function<void()>& steps);

// Runs `steps` in a child process, which exits with the value that `steps` returns. If `steps` throws, the child is
// aborted, so that it doesn't clean up after the test case.
template <typename Steps>
pid_t Started(Steps&& steps) {
    const pid_t process = fork();
    if (process == 0) {
        [&]() noexcept { _exit(steps()); }();
    }
    return process;
}

// Waits for a process to exit and returns its exit code, or -1 if a signal killed it.
int ExitCode(pid_t process);

#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::host {

// A process of the host, one that we started or another. It is asked for by its number only while that number is
// surely its own.
class StartedProcess {
public:
    StartedProcess(pid_t number, bool isChild) : number_(number), isChild_(isChild) {}

    // True when it has ended; a child of ours leaves no trace on the host after that.
    bool Ended();

    // Waits for its end, without a limit when there is no `limit`. False when the time ran out first.
    bool EndAwaited(std::optional<std::chrono::milliseconds> limit);

private:
    pid_t number_;
    bool isChild_;
    bool ended_ = false;
};

struct StartOrder {
    std::filesystem::path program;
    std::vector<std::string> arguments;  // the first is the program's name
    std::filesystem::path directory;     // its working directory; empty for our own
};

// Starts a program in a process group of its own. When we hold the terminal the program gets it, for a person to work
// in; else its standard input is empty. It is told the machine's folder. Sets `process` and returns 0, or returns the
// errno of what failed, the program's own start included. Children that have ended since the last start are let go.
int StartProgram(const StartOrder& order, pid_t& process);

// A process that is running, or a child that ended and was not yet let go; null when there is none.
std::shared_ptr<StartedProcess> FindProcess(pid_t number);

}  // namespace platform::host

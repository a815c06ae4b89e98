#include "platform/host/process/StartedProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "platform/host/FileDescriptor.h"
#include "platform/host/console/Terminal.h"

extern char** environ;

namespace platform::host {

namespace {

// The started programs whose end was not yet told.
std::set<pid_t>& Started() {
    static std::set<pid_t> started;
    return started;
}

// How a program is to be started.
class SpawnPlan {
public:
    explicit SpawnPlan(const ProgramStart& program) : program_(program) {
        posix_spawnattr_init(&attributes_);
        posix_spawn_file_actions_init(&actions_);
        // What we or the loan of a terminal ignore, a program expects to find as the system has it.
        sigset_t defaults;
        sigemptyset(&defaults);
        for (const int number : {SIGINT, SIGQUIT, SIGXFSZ}) {
            sigaddset(&defaults, number);
        }
        posix_spawnattr_setsigdefault(&attributes_, &defaults);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
        if (!program.directory.empty()) {
            posix_spawn_file_actions_addchdir_np(&actions_, program.directory.c_str());
        }
    }
    ~SpawnPlan() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&actions_);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    void KeepFromTerminal() {
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        if (HasTerminal()) {
            posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
            posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        }
    }

    int Spawn(pid_t& process) const {
        std::vector<char*> arguments;
        for (const std::string& argument : program_.arguments) {
            arguments.push_back(const_cast<char*>(argument.c_str()));
        }
        arguments.push_back(nullptr);
        return posix_spawnp(&process, arguments.front(), &actions_, &attributes_, arguments.data(), environ);
    }

private:
    const ProgramStart& program_;
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t actions_{};
};

}  // namespace

int StartProgram(const ProgramStart& program, pid_t& process) {
    // Those that nobody waits for leave the host's table of processes at the next start.
    for (const pid_t earlier : std::set<pid_t>(Started())) {
        HasEnded(earlier);
    }
    SpawnPlan plan(program);
    plan.KeepFromTerminal();
    const int failure = plan.Spawn(process);
    if (failure == 0) {
        Started().insert(process);
    }
    return failure;
}

int RunInTerminal(const ProgramStart& program) {
    const TerminalLoan loan;
    pid_t process = 0;
    const int failure = SpawnPlan(program).Spawn(process);
    if (failure == 0) {
        Uninterrupted([&] { return waitpid(process, nullptr, 0); });
    }
    return failure;
}

bool IsStarted(pid_t process) {
    return Started().contains(process);
}

bool HasEnded(pid_t process) {
    if (IsStarted(process) && Uninterrupted([&] { return waitpid(process, nullptr, WNOHANG); }) != 0) {
        Started().erase(process);
    }
    return !IsStarted(process);
}

}  // namespace platform::host

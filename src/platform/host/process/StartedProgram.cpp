#include "platform/host/process/StartedProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "platform/host/console/Terminal.h"

extern char** environ;

namespace platform::host {

namespace {

int Spawn(const ProgramStart& program, bool inTerminal, pid_t& process) {
    std::vector<char*> arguments;
    for (const std::string& argument : program.arguments) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (!program.directory.empty()) {
        posix_spawn_file_actions_addchdir_np(&actions, program.directory.c_str());
    }
    if (!inTerminal) {
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    if (!inTerminal && HasTerminal()) {
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    }
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, static_cast<short>(inTerminal ? 0 : POSIX_SPAWN_SETPGROUP));
    const int failure = posix_spawn(&process, arguments.front(), &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return failure;
}

}  // namespace

int StartProgram(const ProgramStart& program, pid_t& process) {
    // Reaps child processes that have exited, so that zombies don't accumulate.
    while (waitpid(-1, nullptr, WNOHANG) > 0) {
    }
    return Spawn(program, false, process);
}

int RunInTerminal(const ProgramStart& program) {
    const SuspendedWindows windows;
    pid_t process = 0;
    const int failure = Spawn(program, true, process);
    if (failure == 0) {
        while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    return failure;
}

}  // namespace platform::host

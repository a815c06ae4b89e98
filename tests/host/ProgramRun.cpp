#include "host/ProgramRun.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

struct Started {
    pid_t process;
    int output;  // the read end of its output
};

// Input goes through an unlinked file, so that neither side waits for the other.
int InputFile(const std::string& input) {
    char name[] = "/tmp/vtv4v-input-XXXXXX";
    const int file = mkstemp(name);
    REQUIRE(file >= 0);
    unlink(name);
    REQUIRE(write(file, input.data(), input.size()) == static_cast<ssize_t>(input.size()));
    lseek(file, 0, SEEK_SET);
    return file;
}

[[noreturn]] void Become(const ProgramRun& run, int input, int output) {
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    if (run.fileSizeLimit) {
        const rlimit limit{*run.fileSizeLimit, *run.fileSizeLimit};
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, SIG_IGN);
    }
    std::vector<char*> arguments{const_cast<char*>(VTV4V_PROGRAM)};
    for (const std::string& argument : run.arguments) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    execv(VTV4V_PROGRAM, arguments.data());
    _exit(127);
}

Started Start(const ProgramRun& run) {
    const int input = InputFile(run.input);
    std::array<int, 2> ends{};
    REQUIRE(pipe2(ends.data(), O_CLOEXEC) == 0);
    const pid_t process = fork();
    REQUIRE(process >= 0);
    if (process == 0) {
        Become(run, input, ends[1]);
    }
    close(input);
    close(ends[1]);
    return {process, ends[0]};
}

std::string ReadToEnd(int file) {
    std::string content;
    std::array<char, 4096> buffer{};
    for (ssize_t got = 0; (got = read(file, buffer.data(), buffer.size())) > 0;) {
        content.append(buffer.data(), static_cast<std::size_t>(got));
    }
    close(file);
    return content;
}

}  // namespace

ProgramEnd Run(const ProgramRun& run) {
    const Started started = Start(run);
    ProgramEnd end{-1, ReadToEnd(started.output)};
    int status = 0;
    waitpid(started.process, &status, 0);
    if (WIFEXITED(status)) {
        end.exitCode = WEXITSTATUS(status);
    }
    return end;
}

bool RunAndKill(const ProgramRun& run, unsigned microseconds) {
    const Started started = Start(run);
    usleep(microseconds);
    kill(started.process, SIGKILL);
    int status = 0;
    waitpid(started.process, &status, 0);
    close(started.output);
    return WIFEXITED(status);
}

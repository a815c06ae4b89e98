#include "host/ProgramRun.h"

#include <doctest/doctest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>

#include "host/MachineFiles.h"

namespace {

std::string Quoted(const std::string& text) {
    return " '" + text + "'";
}

// `start` is the shell's way of becoming the program.
ProgramEnd RunFrom(const std::string& start, const ProgramRun& run) {
    MachineFile("typed", run.input);
    std::string command = start + Quoted(VTV4V_PROGRAM);
    for (const std::string& argument : run.arguments) {
        command += Quoted(argument);
    }
    std::FILE* const pipe = popen((command + " 2>&1 <" + Quoted(OnMachine("typed").native())).c_str(), "r");
    REQUIRE(pipe != nullptr);
    ProgramEnd end{-1, {}};
    std::array<char, 4096> buffer{};
    for (std::size_t got = 0; (got = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        end.output.append(buffer.data(), got);
    }
    const int status = pclose(pipe);
    if (WIFEXITED(status)) {
        end.exitCode = WEXITSTATUS(status);
    }
    return end;
}

}  // namespace

ProgramEnd Run(const ProgramRun& run) {
    constexpr unsigned long block = 512;
    return RunFrom(run.fileSizeLimit ? "ulimit -f " + std::to_string(*run.fileSizeLimit / block) + "; exec" : "exec",
                   run);
}

void RunAndKill(const ProgramRun& run, unsigned microseconds) {
    RunFrom("exec timeout -s KILL " + std::to_string(microseconds / 1e6), run);
}
